// The windows that stand in for the other side's: one for each connection, registered with a tool
// and never seen.
#pragma once

#include <cstdint>
#include <map>

#include <windows.h>

#include "bridge/windows/line_pipes.h"

namespace spellwick::bridge {

class Connections {
  public:
    explicit Connections(LinePipes& pipes) : m_pipes(pipes) {}
    Connections(const Connections&) = delete;
    Connections& operator=(const Connections&) = delete;
    ~Connections();

    // Before all else; false if the system refuses.
    static bool RegisterWindowClass();

    void Open(std::uint32_t id, HWND tool);
    void Close(std::uint32_t id);
    // Ends all that lead to windows which are gone.
    void CloseDead();

    // Hands a message to the tool and does not wait: its result goes out as a line when it comes,
    // which may be never. A registration gets the window of this connection.
    void Send(std::uint32_t id, std::uint32_t number, std::uint32_t wParam, std::int32_t lParam);

  private:
    struct Connection {
        HWND tool = nullptr;
        HWND own = nullptr;
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam);
    static void CALLBACK Answered(HWND tool, UINT number, ULONG_PTR id, LRESULT result);
    void WriteResult(std::uint32_t id, std::int32_t result);

    LinePipes& m_pipes;
    std::map<std::uint32_t, Connection> m_connections;
};

}  // namespace spellwick::bridge
