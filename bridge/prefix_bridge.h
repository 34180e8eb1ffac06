// One Wine prefix: the half that runs in it, its tools' windows, each with a socket, and the
// programs connected to them.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <poll.h>

#include "bridge/bridge_line.h"
#include "bridge/socket_folder.h"
#include "bridge/wine_half.h"

namespace spellwick::bridge {

class PrefixBridge {
  public:
    using Clock = std::chrono::steady_clock;

    // Without a folder the windows are found, but not offered.
    PrefixBridge(std::unique_ptr<WineHalf> half, std::string name, SocketFolder* folder,
                 bool verbose)
        : m_half(std::move(half)), m_name(std::move(name)), m_folder(folder), m_verbose(verbose) {}
    PrefixBridge(const PrefixBridge&) = delete;
    PrefixBridge& operator=(const PrefixBridge&) = delete;
    // Removes the sockets.
    ~PrefixBridge();

    // Adds what is to be waited for.
    void Collect(std::vector<pollfd>& wanted);
    // Carries what has come in. Kills a half that hangs at this time: one that was ready and has
    // been silent for ten seconds, or that has not come up in five minutes. Throws CannotOffer.
    void Serve(Clock::time_point now = Clock::now());

    // The half in Wine has ended, and all that it wrote is carried.
    bool Ended();
    // Says nothing any more.
    void BeQuiet() { m_verbose = false; }

    // A tool is there that is not offered yet.
    bool HoldsBack() const;
    // Its first search is done.
    bool IsReady() const { return m_ready; }

  private:
    struct Tool {
        std::string title;
        std::string socket;  // its name
        FileDescriptor listener;
    };
    struct Connection {
        std::uint32_t tool = 0;
        LineStream stream;
    };

    void TakeFromWine(Clock::time_point now);
    void TakeConnections();
    void TakeFromPrograms();
    void OfferTools();
    void ShowTool(std::uint32_t id, const std::string& title);
    void DropTool(std::uint32_t id);
    void DropEnded();
    void Carry(std::uint32_t id, Connection& connection, const std::string& text);
    void Say(const std::string& text) const;
    void Tell(const BridgeLine& line) { m_half->Lines().Write(WrittenBridgeLine(line)); }

    std::unique_ptr<WineHalf> m_half;
    std::string m_name;
    SocketFolder* m_folder;
    bool m_verbose;
    bool m_ready = false;
    Clock::time_point m_lastSign = Clock::now();  // of life, from the half
    std::map<std::uint32_t, Tool> m_tools;
    std::map<std::uint32_t, Connection> m_connections;
    std::uint32_t m_lastConnection = 0;
};

}  // namespace spellwick::bridge
