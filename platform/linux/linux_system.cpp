#include <chrono>
#include <clocale>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include <fontconfig/fontconfig.h>

#include "platform/linux/assist_folder.h"
#include "platform/linux/bridge_process.h"
#include "platform/linux/end_requests.h"
#include "platform/linux/folder_owner.h"
#include "platform/linux/local_clock.h"
#include "platform/linux/open_settings_store.h"
#include "platform/linux/posix_journal_file.h"
#include "platform/linux/socket_assist_transport.h"
#include "platform/linux/sqlite_settings_file.h"
#include "platform/linux/wine_installation.h"
#include "platform/linux/x11_client_windows.h"
#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_desktop.h"
#include "platform/linux/x11_keyboard.h"
#include "platform/system.h"

namespace spellwick {

namespace {

// The first connection of the process, kept until there are others: a server that loses its last
// client starts anew, and refuses whoever comes meanwhile.
std::unique_ptr<X11Connection>& FirstConnection() {
    static std::unique_ptr<X11Connection> connection;
    return connection;
}

bool IsSet(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

// Where the settings are; nothing if no variable says where.
std::optional<std::filesystem::path> FolderOf(const Options& options) {
    if (options.data) {
        std::error_code ignored;
        return std::filesystem::absolute(*options.data, ignored);
    }
    return SettingsFolder();
}

System Open(const Options& options) {
    System system;
    std::string trouble;
    system.clients = X11ClientWindows::Open({}, trouble);
    if (system.clients == nullptr) {
        throw std::runtime_error(trouble);
    }
    system.keyboard = X11Keyboard::Open({}, trouble);
    if (system.keyboard == nullptr) {
        system.troubles.push_back(trouble);
    }
    system.desktop = std::make_unique<X11Desktop>("");
    system.installation = std::make_unique<WineInstallation>(WinePrefix());
    system.clock = std::make_unique<LocalClock>();
    const std::optional<std::filesystem::path> folder = FolderOf(options);
    OpenedStore opened = OpenSettingsStore(folder, std::chrono::system_clock::now());
    system.store = std::move(opened.store);
    if (opened.lasts) {
        system.journal = std::make_unique<PosixJournalFile>(*folder / "journal");
        system.storePlace = (*folder / "settings.db").string();
    }
    system.files = std::make_unique<SqliteSettingsFile>(folder ? *folder / "settings.db"
                                                               : std::filesystem::path());
    if (!opened.trouble.empty()) {
        system.troubles.push_back(opened.trouble);
    }
    system.folder = folder;
    system.licences = {"SQLite: public domain", "XCB and xkbcommon: MIT",
                       "utfcpp: Boost Software License 1.0"};
    system.wayland = IsSet("WAYLAND_DISPLAY");
    system.assist = std::make_unique<SocketAssistTransport>(AssistFolder());
    system.wineTools = std::make_unique<BridgeProcess>(BridgeFolders());
    return system;
}

}  // namespace

void TakeEndRequest(int endRequests) {
    TakeEndSignal(endRequests);
}

std::string PrepareProcess() {
    if (!IsSet("DISPLAY")) {
        return IsSet("WAYLAND_DISPLAY")
                   ? "This Wayland session has no XWayland, without which Spellwick can neither "
                     "see "
                     "the game's window nor type into it."
                   : "There is no X display to show a window on (DISPLAY is not set).";
    }
    FirstConnection() = std::make_unique<X11Connection>("");
    if (!FirstConnection()->Works()) {
        return std::string("The X display \"") + std::getenv("DISPLAY") + "\" cannot be opened.";
    }
    HoldEndSignals();
    // Even under Wayland the game's windows are X11 windows, so ours must be too.
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    return {};
}

Ownership OwnSettings(const Options& options) {
    const std::optional<std::filesystem::path> folder = FolderOf(options);
    if (!folder) {
        return {};
    }
    Ownership ownership = OwnFolder(*folder);
    if (ownership.another) {
        std::string trouble;
        const auto window = WindowOfOwner(*folder);
        const auto windows = window ? X11ClientWindows::Open({}, trouble) : nullptr;
        // If it does not come forward, its own desktop says why; there is nothing more to do here.
        static_cast<void>(windows != nullptr && windows->SetForegroundWindow(*window));
    }
    return ownership;
}

std::future<System> OpenSystem(const Options& options) {
    // The toolkit sets the locale too, which the thread must not see change.
    std::setlocale(LC_ALL, "");
    const int endRequests = WatchEndRequests();
    return std::async(std::launch::async, [options, endRequests] {
        // The list of the system's fonts is a good part of a start. If it cannot be read, the
        // toolkit tries again and says so.
        static_cast<void>(FcInit());
        System system = Open(options);
        system.endRequests = endRequests;
        FirstConnection().reset();
        return system;
    });
}

}  // namespace spellwick
