#include <cstdlib>
#include <filesystem>
#include <optional>

#include "platform/system.h"
#include "platform/windows/registry_installation.h"
#include "platform/windows/registry_settings_store.h"
#include "platform/windows/window_assist_transport.h"
#include "platform/windows/windows_client_windows.h"
#include "platform/windows/windows_clock.h"
#include "platform/windows/windows_desktop.h"
#include "platform/windows/windows_journal_file.h"
#include "platform/windows/windows_keyboard.h"

namespace spellwick {

namespace {

// %APPDATA%\Spellwick, which need not exist.
std::optional<std::filesystem::path> SettingsFolder() {
    const wchar_t* data = _wgetenv(L"APPDATA");
    if (data == nullptr || *data == L'\0') {
        return std::nullopt;
    }
    return std::filesystem::path(data) / L"Spellwick";
}

}  // namespace

void TakeEndRequest(int /*endRequests*/) {}

std::string PrepareProcess() {
    return {};
}

System OpenSystem() {
    System system;
    system.clients = std::make_unique<WindowsClientWindows>();
    system.keyboard = std::make_unique<WindowsKeyboard>();
    system.desktop = std::make_unique<WindowsDesktop>();
    system.installation = std::make_unique<RegistryInstallation>();
    system.clock = std::make_unique<WindowsClock>();
    system.store = std::make_unique<RegistrySettingsStore>();
    if (const auto folder = SettingsFolder()) {
        system.journal = std::make_unique<WindowsJournalFile>(*folder / L"journal");
    }
    system.assist = std::make_unique<WindowAssistTransport>();
    return system;
}

}  // namespace spellwick
