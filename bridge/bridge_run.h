// The run of the bridge: looks for Wine prefixes again and again, and keeps one half in each.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bridge/command_line.h"
#include "bridge/prefix_bridge.h"

namespace spellwick::bridge {

class BridgeRun {
  public:
    // `programs` is the folder of the halves for Wine.
    BridgeRun(BridgeOptions options, std::filesystem::path programs);

    // Until a signal or the end of the input asks for the end. Throws CannotOffer.
    void Run(const std::filesystem::path& socketFolder);
    // Says what is there, and returns.
    void LookOnce();

  private:
    using Clock = std::chrono::steady_clock;

    // What is known of one running wineserver.
    struct Prefix {
        std::unique_ptr<PrefixBridge> bridge;
        Clock::time_point nextTry{};
        bool isRefused = false;  // no half can be started in it
    };

    void Search();
    void StartHalf(const WineServer& server, Prefix& prefix);
    bool IsWanted(const WineServer& server) const;
    void Serve();
    // Waits until there is something to do, this long at most.
    void Await(std::chrono::milliseconds patience);
    bool IsAskedToEnd();
    void Say(const std::string& text) const;

    BridgeOptions m_options;
    std::filesystem::path m_programs;
    FileDescriptor m_signals;
    bool m_ending = false;
    std::optional<SocketFolder> m_folder;                             // none: nothing is offered
    std::map<std::string, std::pair<WineServer, Prefix>> m_prefixes;  // by process and name
};

}  // namespace spellwick::bridge
