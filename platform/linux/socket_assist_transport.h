// Assist tools on Linux: each listens on a socket in one folder, and one socket stands for one
// top-level window.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/assist_transport.h"
#include "platform/linux/assist_peer.h"
#include "platform/linux/file_descriptor.h"

namespace spellwick {

class SocketAssistTransport : public AssistTransport {
  public:
    struct Patience {
        AssistPatience answers;
        // How long one search waits for the titles of all tools that it has connected to.
        std::chrono::milliseconds greeting{40};
        // How long a tool may keep its title back before another takes its place.
        std::chrono::milliseconds title{500};
        // How long one Service handles messages.
        std::chrono::milliseconds service{8};
    };

    explicit SocketAssistTransport(std::filesystem::path folder);
    SocketAssistTransport(std::filesystem::path folder, Patience patience);

    // The windows in the order of their sockets' names, at most 16. A tool that has not sent its
    // title has none; only the search that finds it waits for it, and briefly. If there are more
    // tools, those without a title take turns.
    void EnumWindows(const WindowVisitor& visit) override;

    // Waits only briefly until the first Attach. A window that has not answered a message gets the
    // next ones at growing intervals until it does, whatever else it sends: each blocks the program
    // again.
    i32 SendToWindow(WindowHandle window, std::uint32_t number, std::uint32_t wParam,
                     const i32& word) override;

    void Attach(WindowHandle /*own*/, MessageReceiver& receiver) override {
        m_receiver = &receiver;
        m_starting = false;
    }
    void Detach() override { m_receiver = nullptr; }

    int Descriptor() const override { return m_events.Number(); }
    void Service() override;
    void ServePending() override;

  private:
    using Clock = std::chrono::steady_clock;

    // A message of ours that is waiting for its answer.
    struct Waiting {
        WindowHandle window = 0;
        std::optional<i32> answer;
    };

    void ConnectToNewSockets();
    bool IsConnected(const std::string& name) const;
    bool IsFull() const;
    // The peer that has been mute longest, whose place another may take; null if there is none.
    AssistPeer* FindMute() const;
    void AwaitGreetings(std::size_t firstNew);
    // Waits until the message is answered, the peer has gone, or its time is up.
    void AwaitAnswer(AssistPeer& peer, const Waiting& waiting);
    AssistPeer* Find(WindowHandle window) const;
    // Waits until one of the peers from `first` on has sent something.
    void AwaitInput(std::size_t first, Clock::time_point deadline);
    void ReadAll();
    // Handles one line of one peer, in turns; false if there is none.
    bool ServeOne();
    void Serve(AssistPeer& peer, const AssistLine& line);
    void Answer(AssistPeer& peer, const WindowMessage& message);
    bool HasLines() const;
    // Makes the descriptor readable if there is something to do.
    void Arm();
    void DropEnded();

    std::filesystem::path m_folder;
    Patience m_patience;
    FileDescriptor m_events;    // epoll
    FileDescriptor m_leftOver;  // readable while lines that were read are waiting
    FileDescriptor m_stuck;     // timer, runs while no more reports are taken
    std::vector<std::unique_ptr<AssistPeer>> m_peers;
    std::set<std::string> m_muteNames;  // sockets that have lost their place, until they greet
    std::string m_lastTried;            // where the next search goes on; empty for the start
    std::vector<Waiting*> m_waiting;    // the innermost last
    MessageReceiver* m_receiver = nullptr;
    bool m_starting = true;  // no receiver has been attached yet
    WindowHandle m_lastWindow = 0;
    std::size_t m_turn = 0;
    int m_depth = 0;    // messages being handled inside each other
    int m_deepest;      // the limit of m_depth
    int m_sending = 0;  // own messages being waited for
};

}  // namespace spellwick
