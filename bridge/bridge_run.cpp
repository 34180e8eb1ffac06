#include "bridge/bridge_run.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>

#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace spellwick::bridge {

namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr seconds kSearchInterval{1};
// Between looks whether a tool may be offered by now.
constexpr milliseconds kHeldBackInterval{100};
// A half that has ended is started again after this long. Longer than a wineserver outlives its
// last program: another half would keep it from ending.
constexpr seconds kRestartPause{15};
constexpr seconds kLongestLook{15};

// From now on they come by the descriptor.
FileDescriptor TakeSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGCHLD}) {
        sigaddset(&signals, number);
    }
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    return FileDescriptor(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
}

std::string KeyOf(const WineServer& server) {
    return std::to_string(server.process) + ' ' + server.name;
}

}  // namespace

BridgeRun::BridgeRun(BridgeOptions options, std::filesystem::path programs)
    : m_options(std::move(options)), m_programs(std::move(programs)), m_signals(TakeSignals()) {}

void BridgeRun::Say(const std::string& text) const {
    if (m_options.verbose) {
        std::printf("%s\n", text.c_str());
        std::fflush(stdout);
    }
}

void BridgeRun::Run(const std::filesystem::path& socketFolder) {
    SocketFolder& folder = m_folder.emplace(socketFolder);
    bool waits = false;
    while (!folder.Lock()) {
        if (!waits) {
            Say("another bridge runs; waiting for its end");
            waits = true;
        }
        Await(kSearchInterval);
        if (m_ending) {
            return;
        }
    }
    Say("offering tools in " + socketFolder.string());
    auto next = Clock::now();
    while (!m_ending) {
        if (Clock::now() >= next) {
            Search();
            next = Clock::now() + kSearchInterval;
        }
        Await(std::max(milliseconds(1), duration_cast<milliseconds>(next - Clock::now())));
        Serve();
    }
    m_prefixes.clear();
}

void BridgeRun::LookOnce() {
    Search();
    if (m_prefixes.empty()) {
        Say("no Wine is running");
    }
    const auto deadline = Clock::now() + kLongestLook;
    const auto isBusy = [](const auto& entry) {
        PrefixBridge* bridge = entry.second.second.bridge.get();
        return bridge != nullptr && !bridge->IsReady();
    };
    while (!m_ending && Clock::now() < deadline && std::ranges::any_of(m_prefixes, isBusy)) {
        Await(kSearchInterval);
        Serve();
    }
    m_options.verbose = false;
    for (auto& [key, entry] : m_prefixes) {
        if (entry.second.bridge != nullptr) {
            entry.second.bridge->BeQuiet();
        }
    }
    m_prefixes.clear();
}

bool BridgeRun::IsWanted(const WineServer& server) const {
    return m_options.prefixes.empty() ||
           std::ranges::any_of(m_options.prefixes, [&server](const auto& folder) {
               return IsPrefixOf(folder, server.name);
           });
}

void BridgeRun::Search() {
    // Halves that were not waited for when their prefix ended.
    while (waitpid(-1, nullptr, WNOHANG) > 0) {
    }
    const std::vector<WineServer> servers = FindWineServers();
    std::erase_if(m_prefixes, [&](const auto& entry) {
        const auto& [server, prefix] = entry.second;
        const bool gone = std::ranges::find(servers, server) == servers.end();
        if (gone) {
            Say("ended: wineserver " + std::to_string(server.process));
        }
        return gone;
    });
    for (const WineServer& server : servers) {
        if (IsWanted(server)) {
            auto& [known, prefix] = m_prefixes[KeyOf(server)];
            known = server;
            if (prefix.bridge == nullptr && !prefix.isRefused && Clock::now() >= prefix.nextTry) {
                StartHalf(server, prefix);
            }
        }
    }
}

void BridgeRun::StartHalf(const WineServer& server, Prefix& prefix) {
    const std::string who = "wineserver " + std::to_string(server.process);
    std::string trouble;
    const auto found = FindPrefix(server, trouble);
    const std::filesystem::path program =
        m_programs / (found && found->is32Bit ? "spellwick-bridge32.exe" : "spellwick-bridge.exe");
    if (found && access(program.c_str(), R_OK) != 0) {
        trouble = program.string() + " is missing";
    }
    std::unique_ptr<WineHalf> half;
    if (trouble.empty()) {
        half = WineHalf::Start(*found, program, trouble);
    }
    if (half == nullptr) {
        // One that has just ended has nothing to be read; another may have a reason of its own.
        prefix.isRefused = IsRunning(server);
        Say(who + ": " + trouble);
        return;
    }
    Say(who + ": prefix " + found->folder.string() + (found->is32Bit ? ", 32 bits, " : ", ") +
        found->wine.string());
    prefix.bridge = std::make_unique<PrefixBridge>(
        std::move(half), server.name, m_folder ? &*m_folder : nullptr, m_options.verbose);
}

void BridgeRun::Serve() {
    for (auto& [key, entry] : m_prefixes) {
        Prefix& prefix = entry.second;
        if (prefix.bridge == nullptr) {
            continue;
        }
        prefix.bridge->Serve();
        if (prefix.bridge->Ended()) {
            prefix.bridge.reset();
            prefix.nextTry = Clock::now() + kRestartPause;
        }
    }
}

void BridgeRun::Await(milliseconds patience) {
    std::vector<pollfd> wanted{{m_signals.Number(), POLLIN, 0}};
    if (m_options.endsWithInput) {
        wanted.push_back({STDIN_FILENO, POLLIN, 0});
    }
    for (auto& [key, entry] : m_prefixes) {
        if (entry.second.bridge != nullptr) {
            entry.second.bridge->Collect(wanted);
        }
    }
    const bool isHeldBack = std::ranges::any_of(m_prefixes, [](const auto& entry) {
        const PrefixBridge* bridge = entry.second.second.bridge.get();
        return bridge != nullptr && bridge->HoldsBack();
    });
    const milliseconds most = isHeldBack ? std::min(patience, kHeldBackInterval) : patience;
    poll(wanted.data(), wanted.size(), static_cast<int>(most.count()));
    m_ending = m_ending || IsAskedToEnd();
    if (m_options.endsWithInput && (wanted[1].revents & (POLLIN | POLLHUP | POLLERR)) != 0) {
        std::array<char, 256> ignored{};
        m_ending = m_ending || read(STDIN_FILENO, ignored.data(), ignored.size()) <= 0;
    }
}

bool BridgeRun::IsAskedToEnd() {
    signalfd_siginfo signal{};
    bool asked = false;
    while (read(m_signals.Number(), &signal, sizeof signal) == sizeof signal) {
        asked = asked || signal.ssi_signo != SIGCHLD;
    }
    return asked;
}

}  // namespace spellwick::bridge
