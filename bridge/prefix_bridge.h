// One Wine prefix: the half that runs in it, its tools' windows, each with a socket, and the
// programs connected to them.
#pragma once

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
    // Carries what has come in. Throws CannotOffer.
    void Serve();

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

    void TakeFromWine();
    void TakeConnections();
    void TakeFromPrograms();
    void OfferTools();
    void ShowTool(std::uint32_t id, const std::string& title);
    void DropTool(std::uint32_t id);
    void DropEnded();
    void Carry(std::uint32_t id, Connection& connection, const std::string& text);
    void Tell(const BridgeLine& line) { m_half->Lines().Write(WrittenBridgeLine(line)); }

    std::unique_ptr<WineHalf> m_half;
    std::string m_name;
    SocketFolder* m_folder;
    bool m_verbose;
    bool m_ready = false;
    std::map<std::uint32_t, Tool> m_tools;
    std::map<std::uint32_t, Connection> m_connections;
    std::uint32_t m_lastConnection = 0;
};

}  // namespace spellwick::bridge
