// Assist tools on Linux: each listens on a socket in one folder, and one socket stands for one
// top-level window.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <vector>

#include "platform/assist_transport.h"
#include "platform/linux/assist_peer.h"
#include "platform/linux/file_descriptor.h"

namespace spellwick {

class SocketAssistTransport : public AssistTransport {
  public:
    struct Patience {
        // For the answer to one message of ours.
        std::chrono::milliseconds answer{5000};
        // For the greetings of all the tools that one search has connected to.
        std::chrono::milliseconds greeting{40};
        // For the messages of one Service.
        std::chrono::milliseconds service{8};
    };

    explicit SocketAssistTransport(std::filesystem::path folder);
    SocketAssistTransport(std::filesystem::path folder, Patience patience);

    // The windows in the order of their sockets' names. A tool that has not greeted yet has none;
    // it is waited for shortly in the search that finds it, and never again.
    void EnumWindows(const WindowVisitor& visit) override;

    // A window that has left one message without an answer gets no other until it has given it,
    // whatever else it says meanwhile: each would hold the program up again.
    i32 SendToWindow(WindowHandle window, std::uint32_t number, std::uint32_t wParam,
                     const i32& word) override;

    void Attach(WindowHandle /*own*/, MessageReceiver& receiver) override {
        m_receiver = &receiver;
    }
    void Detach() override { m_receiver = nullptr; }

    int Descriptor() const override { return m_events.Number(); }
    void Service() override;

  private:
    using Clock = std::chrono::steady_clock;

    // An own message on its way.
    struct Waiting {
        WindowHandle window = 0;
        std::optional<i32> answer;
    };

    void ConnectToNewSockets();
    void AwaitGreetings(std::size_t firstNew);
    AssistPeer* Find(WindowHandle window) const;
    // Waits until one of the peers from `first` on has something to say.
    void AwaitInput(std::size_t first, Clock::time_point deadline);
    void ReadAll();
    // Takes one line of one peer, each in its turn; false if there is none.
    bool ServeOne();
    void Serve(AssistPeer& peer, const AssistLine& line);
    void Answer(AssistPeer& peer, const WindowMessage& message);
    bool HasLines() const;
    // Brings the descriptor in line with what there is to do.
    void Arm();
    void DropEnded();

    std::filesystem::path m_folder;
    Patience m_patience;
    FileDescriptor m_events;    // epoll
    FileDescriptor m_leftOver;  // readable while lines wait that have been read already
    FileDescriptor m_stuck;     // timer, running while no more reports are taken
    std::vector<std::unique_ptr<AssistPeer>> m_peers;
    std::vector<Waiting*> m_waiting;  // the innermost last
    MessageReceiver* m_receiver = nullptr;
    WindowHandle m_lastWindow = 0;
    std::size_t m_turn = 0;
    int m_depth = 0;    // messages being handled inside each other
    int m_deepest;      // so many of them and no more
    int m_sending = 0;  // own messages being waited for
};

}  // namespace spellwick
