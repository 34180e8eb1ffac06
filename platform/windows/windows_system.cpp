#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/background_journal_file.h"
#include "platform/system.h"
#include "platform/windows/folder_name.h"
#include "platform/windows/mutex_owner.h"
#include "platform/windows/registry_installation.h"
#include "platform/windows/registry_settings_store.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/window_assist_transport.h"
#include "platform/windows/windows_client_windows.h"
#include "platform/windows/windows_clock.h"
#include "platform/windows/windows_desktop.h"
#include "platform/windows/windows_journal_file.h"
#include "platform/windows/windows_keyboard.h"

namespace spellwick {

// The text of packaging/windows/licences.txt, from which the packages tell the licences too.
std::string_view LicencesOnWindows();

namespace {

std::vector<std::string> LinesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// The folder of the files, which need not exist: %APPDATA%\Spellwick unless told otherwise.
std::optional<std::filesystem::path> SettingsFolder(const Options& options) {
    if (options.data) {
        std::error_code ignored;
        return std::filesystem::absolute(*options.data, ignored);
    }
    const wchar_t* data = _wgetenv(L"APPDATA");
    if (data == nullptr || *data == L'\0') {
        return std::nullopt;
    }
    return std::filesystem::path(data) / L"Spellwick";
}

System Open(const Options& options) {
    System system;
    system.clients = std::make_unique<WindowsClientWindows>();
    system.keyboard = std::make_unique<WindowsKeyboard>();
    system.desktop = std::make_unique<WindowsDesktop>();
    system.installation = std::make_unique<RegistryInstallation>();
    system.clock = std::make_unique<WindowsClock>();
    const auto folder = SettingsFolder(options);
    const std::wstring key = options.data && folder ? std::wstring(kSettingsKey) + L" data\\" +
                                                          FolderName(folder->wstring())
                                                    : std::wstring(kSettingsKey);
    system.store = std::make_unique<RegistrySettingsStore>(key);
    system.storePlace = "HKEY_CURRENT_USER\\" + Utf8FromWide(key);
    system.licences = LinesOf(LicencesOnWindows());
    if (folder) {
        system.journal = std::make_unique<BackgroundJournalFile>(
            std::make_unique<WindowsJournalFile>(*folder / L"journal"));
    }
    system.folder = folder;
    system.assist = std::make_unique<WindowAssistTransport>();
    return system;
}

}  // namespace

void TakeEndRequest(int /*endRequests*/) {}

Preparation PrepareProcess() {
    return {};
}

Ownership OwnSettings(const Options& options) {
    const auto folder = SettingsFolder(options);
    if (!folder) {
        return {};
    }
    Ownership ownership = OwnByMutex(folder->wstring());
    if (ownership.another) {
        // If it does not come forward, there is nothing more to do here.
        static_cast<void>(RaiseOwner(folder->wstring()));
    }
    return ownership;
}

std::future<System> OpenSystem(const Options& options, std::shared_ptr<const void> display) {
    // A window belongs to the thread that made it, so all is opened by the one that asks for it.
    return std::async(std::launch::deferred,
                      [options, display = std::move(display)] { return Open(options); });
}

}  // namespace spellwick
