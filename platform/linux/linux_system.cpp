#include <chrono>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <system_error>

#include <fontconfig/fontconfig.h>
#include <sched.h>
#include <unistd.h>

#include "platform/background_journal_file.h"
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

// For a thread beside the first one, at its beginning. The first page waits for the first thread
// and the X server, which would otherwise stand behind this one for milliseconds; on Linux the
// priority is that of the thread. Not much lower, since the first thread waits for the result, on a
// busy machine too. A system that refuses it only starts the program later.
void GiveWay() {
    constexpr int kLower = 5;
    static_cast<void>(nice(kLower));
    // A new thread begins in the place of the one that has made it.
    sched_yield();
}

// The list of the system's fonts is a good part of a start. Until the result of OpenSystem is
// there, nothing but this thread calls the library of fonts. If it cannot read them, the toolkit
// tries again and says so.
std::future<void> ReadFonts() {
    // The toolkit sets the locale too, which the thread must not see change.
    std::setlocale(LC_ALL, "");
    // The signals are not held yet: they must not end the process by way of this thread later.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::future<void> reading;
    try {
        reading = std::async(std::launch::async, [] {
            GiveWay();
            static_cast<void>(FcInit());
        });
    } catch (const std::system_error&) {
        // Without a thread the toolkit reads them when it needs them.
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return reading;
}

// What begins with the process, until the system is open. Its end waits for the thread that reads
// the fonts, since that must not run on while the libraries end.
struct Beginning {
    std::future<void> fonts = ReadFonts();
    // Kept until there are other connections: a server that loses its last client starts anew, and
    // refuses whoever comes meanwhile.
    X11Connection connection{""};
};

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

void OpenDisplay(System& system) {
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
    system.wayland = IsSet("WAYLAND_DISPLAY");
    system.mapsLater = true;
}

void OpenSettings(System& system, const std::optional<std::filesystem::path>& folder) {
    OpenedStore opened = OpenSettingsStore(folder, std::chrono::system_clock::now());
    system.store = std::move(opened.store);
    if (opened.lasts) {
        system.journal = std::make_unique<BackgroundJournalFile>(
            std::make_unique<PosixJournalFile>(*folder / "journal"));
        system.storePlace = (*folder / "settings.db").string();
    }
    system.files = std::make_unique<SqliteSettingsFile>(folder ? *folder / "settings.db"
                                                               : std::filesystem::path());
    if (!opened.trouble.empty()) {
        system.troubles.push_back(opened.trouble);
    }
    system.folder = folder;
}

System Open(const Options& options) {
    System system;
    OpenDisplay(system);
    system.installation = std::make_unique<WineInstallation>(WinePrefix());
    system.clock = std::make_unique<LocalClock>();
    OpenSettings(system, FolderOf(options));
    system.licences = {"SQLite: public domain", "XCB and xkbcommon: MIT",
                       "utfcpp: Boost Software License 1.0"};
    system.assist = std::make_unique<SocketAssistTransport>(AssistFolder());
    system.wineTools = std::make_unique<BridgeProcess>(BridgeFolders());
    return system;
}

}  // namespace

void TakeEndRequest(int endRequests) {
    TakeEndSignal(endRequests);
}

Preparation PrepareProcess() {
    if (!IsSet("DISPLAY")) {
        return {.trouble = IsSet("WAYLAND_DISPLAY")
                               ? "This Wayland session has no XWayland, without which Spellwick "
                                 "can neither see the game's window nor type into it."
                               : "There is no X display to show a window on (DISPLAY is not set).",
                .display = nullptr};
    }
    // Even under Wayland the game's windows are X11 windows, so ours must be too. No variable
    // changes once there is a thread that may read one.
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    auto beginning = std::make_shared<const Beginning>();
    if (!beginning->connection.Works()) {
        return {.trouble = std::string("The X display \"") + std::getenv("DISPLAY") +
                           "\" cannot be opened.",
                .display = nullptr};
    }
    HoldEndSignals();
    return {.trouble = {}, .display = std::move(beginning)};
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

std::future<System> OpenSystem(const Options& options, std::shared_ptr<const void> display) {
    const int endRequests = WatchEndRequests();
    auto open = [options, endRequests, display = std::move(display)]() mutable {
        GiveWay();
        System system = Open(options);
        system.endRequests = endRequests;
        if (const auto& fonts = static_cast<const Beginning*>(display.get())->fonts;
            fonts.valid()) {
            fonts.wait();
        }
        display.reset();
        return system;
    };
    return std::async(std::launch::async, std::move(open));
}

}  // namespace spellwick
