#include "platform/linux/socket_assist_transport.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include <poll.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>

#include "platform/linux/assist_folder.h"

namespace spellwick {

namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;

// Handling a report serves events, and with them further reports, so a burst must not nest them
// without limit. A report that waits for the user, in a message box, must not block the others:
// while it waits, the limit is raised by one after a while.
constexpr int kDeepest = 8;
constexpr timespec kStuckAfter{.tv_sec = 0, .tv_nsec = 250'000'000};
constexpr milliseconds kLongestPending{500};
constexpr std::ptrdiff_t kMostPeers = 16;
// Names tried in one search, a few microseconds each.
constexpr int kMostTried = 1000;

// The low 32 bits of an address; a message has room for no more.
i32 AddressWord(const i32& word) {
    return static_cast<i32>(static_cast<std::uint32_t>(std::bit_cast<std::uintptr_t>(&word)));
}

bool IsLive(const std::unique_ptr<AssistPeer>& peer) {
    return !peer->Ended();
}

}  // namespace

SocketAssistTransport::SocketAssistTransport(std::filesystem::path folder)
    : SocketAssistTransport(std::move(folder), Patience()) {}

SocketAssistTransport::SocketAssistTransport(std::filesystem::path folder, Patience patience)
    : m_folder(std::move(folder)),
      m_patience(patience),
      m_events(epoll_create1(EPOLL_CLOEXEC)),
      m_leftOver(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      m_stuck(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)),
      m_deepest(kDeepest) {
    epoll_event event{};
    event.events = EPOLLIN;
    for (const FileDescriptor* own : {&m_leftOver, &m_stuck}) {
        epoll_ctl(m_events.Number(), EPOLL_CTL_ADD, own->Number(), &event);
    }
}

void SocketAssistTransport::EnumWindows(const WindowVisitor& visit) {
    // Notice in this search that a tool has closed since the last one.
    ReadAll();
    DropEnded();
    const std::size_t firstNew = m_peers.size();
    ConnectToNewSockets();
    AwaitGreetings(firstNew);
    std::vector<const AssistPeer*> windows;
    for (const auto& peer : m_peers) {
        if (peer->IsWindow()) {
            windows.push_back(peer.get());
            m_muteNames.erase(peer->Name());
        }
    }
    std::ranges::sort(windows, {}, &AssistPeer::Name);
    for (const AssistPeer* window : windows) {
        visit(window->Window(), window->Title());
    }
    Arm();
}

void SocketAssistTransport::ConnectToNewSockets() {
    const FileDescriptor folder = OpenAssistFolder(m_folder);
    if (!folder) {
        return;
    }
    std::vector<std::string> names = SocketNames(folder);
    std::erase_if(m_muteNames, [&names](const std::string& name) {
        return !std::ranges::binary_search(names, name);
    });
    // Before any of them gives its place up: it is not to have it back at once.
    std::erase_if(names, [this](const std::string& name) { return IsConnected(name); });
    // Each gets its turn, so go on where the last search stopped.
    // Not of std::ranges: clang++ 14 does not take the subrange that it gives.
    std::rotate(names.begin(), std::ranges::upper_bound(names, m_lastTried), names.end());
    int tried = 0;
    for (const std::string& name : names) {
        AssistPeer* const mute = IsFull() ? FindMute() : nullptr;
        if ((IsFull() && mute == nullptr) || ++tried > kMostTried) {
            return;
        }
        m_lastTried = name;
        FileDescriptor connection = ConnectToSocket(folder, name);
        if (connection) {
            if (mute != nullptr) {
                m_muteNames.insert(mute->Name());
                mute->End();
            }
            m_peers.push_back(
                std::make_unique<AssistPeer>(name, ++m_lastWindow, std::move(connection)));
        }
    }
    m_lastTried.clear();
}

bool SocketAssistTransport::IsConnected(const std::string& name) const {
    return std::ranges::any_of(
        m_peers, [&name](const auto& peer) { return IsLive(peer) && peer->Name() == name; });
}

bool SocketAssistTransport::IsFull() const {
    return std::ranges::count_if(m_peers, IsLive) >= kMostPeers;
}

AssistPeer* SocketAssistTransport::FindMute() const {
    const auto mute = std::ranges::find_if(
        m_peers, [this](const auto& peer) { return peer->IsMuteFor(m_patience.title); });
    return mute == m_peers.end() ? nullptr : mute->get();
}

void SocketAssistTransport::AwaitGreetings(std::size_t firstNew) {
    const auto deadline = Clock::now() + m_patience.greeting;
    const auto greet = [&] {
        bool all = true;
        for (std::size_t i = firstNew; i < m_peers.size(); ++i) {
            AssistPeer& peer = *m_peers[i];
            if (!peer.Ended() && !peer.IsWindow()) {
                peer.Read();
                peer.TakeLine();
                // One that was mute before is not waited for again.
                all = all && (peer.Ended() || peer.IsWindow() || m_muteNames.contains(peer.Name()));
            }
        }
        return all;
    };
    while (!greet() && Clock::now() < deadline) {
        AwaitInput(firstNew, deadline);
    }
    // Tools found earlier that have sent their title since.
    for (std::size_t i = 0; i < firstNew; ++i) {
        if (!m_peers[i]->Ended() && !m_peers[i]->IsWindow()) {
            m_peers[i]->Read();
            m_peers[i]->TakeLine();
        }
    }
}

AssistPeer* SocketAssistTransport::Find(WindowHandle window) const {
    const auto found = std::ranges::find(m_peers, window, &AssistPeer::Window);
    return found == m_peers.end() ? nullptr : found->get();
}

i32 SocketAssistTransport::SendToWindow(WindowHandle window, std::uint32_t number,
                                        std::uint32_t wParam, const i32& word) {
    AssistPeer* peer = Find(window);
    if (peer == nullptr || !peer->IsWindow() || !peer->Silence().MayAsk(Clock::now())) {
        return 0;
    }
    Waiting waiting{.window = window, .answer = {}};
    m_waiting.push_back(&waiting);
    ++m_sending;
    peer->Write(WrittenSend({number, static_cast<i32>(wParam), AddressWord(word)}));
    AwaitAnswer(*peer, waiting);
    --m_sending;
    std::erase(m_waiting, &waiting);
    Arm();
    return waiting.answer.value_or(0);
}

void SocketAssistTransport::AwaitAnswer(AssistPeer& peer, const Waiting& waiting) {
    const auto deadline = Clock::now() + peer.Silence().Wait(m_patience.answers, m_starting);
    const int owedBefore = peer.Owed();
    ReadAll();
    while (!waiting.answer) {
        const bool served = ServeOne();
        if (!served && peer.Ended()) {
            return;
        }
        if (!waiting.answer && Clock::now() >= deadline) {
            // If an answer came and only paid for an earlier message, the tool passes messages
            // over: what it still seems to owe never comes.
            peer.SetOwed(peer.Owed() < owedBefore ? 0 : peer.Owed() + 1);
            peer.Silence().GiveUp(Clock::now(), m_patience.answers);
            return;
        }
        if (!served) {
            AwaitInput(0, deadline);
            ReadAll();
        }
    }
    peer.Silence().End();
}

void SocketAssistTransport::AwaitInput(std::size_t first, Clock::time_point deadline) {
    std::vector<pollfd> descriptors;
    for (std::size_t i = first; i < m_peers.size(); ++i) {
        const AssistPeer& peer = *m_peers[i];
        if (!peer.Ended()) {
            const short wanted = peer.WantsToWrite() ? POLLIN | POLLOUT : POLLIN;
            descriptors.push_back({peer.Descriptor(), wanted, 0});
        }
    }
    const auto left = duration_cast<milliseconds>(deadline - Clock::now()) + milliseconds(1);
    poll(descriptors.data(), descriptors.size(),
         static_cast<int>(std::max(left, milliseconds(0)).count()));
}

void SocketAssistTransport::ReadAll() {
    for (const auto& peer : m_peers) {
        peer->Flush();
        peer->Read();
    }
}

void SocketAssistTransport::Service() {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t got = read(m_leftOver.Number(), &count, sizeof count);
    if (read(m_stuck.Number(), &count, sizeof count) > 0) {
        m_deepest = std::max(m_deepest, m_depth + 1);
    }
    if (m_depth < m_deepest) {
        const auto deadline = Clock::now() + m_patience.service;
        ReadAll();
        while (Clock::now() < deadline && ServeOne()) {
            continue;
        }
        DropEnded();
    }
    Arm();
}

void SocketAssistTransport::ServePending() {
    const auto deadline = Clock::now() + kLongestPending;
    do {
        ReadAll();
        while (Clock::now() < deadline && ServeOne()) {
            continue;
        }
        ReadAll();
    } while (Clock::now() < deadline && HasLines());
    Arm();
}

bool SocketAssistTransport::ServeOne() {
    for (std::size_t tried = 0; tried < m_peers.size(); ++tried) {
        m_turn = (m_turn + 1) % m_peers.size();
        AssistPeer& peer = *m_peers[m_turn];
        if (peer.HasLine()) {
            if (const auto line = peer.TakeLine()) {
                Serve(peer, *line);
            }
            return true;
        }
    }
    return false;
}

void SocketAssistTransport::Serve(AssistPeer& peer, const AssistLine& line) {
    if (const auto* send = std::get_if<SendLine>(&line)) {
        Answer(peer, send->message);
        return;
    }
    if (const auto* result = std::get_if<ResultLine>(&line)) {
        if (peer.TakeLateAnswer()) {
            return;
        }
        // The innermost of our messages to this window is answered first.
        const auto waiting = std::find_if(m_waiting.rbegin(), m_waiting.rend(), [&](Waiting* own) {
            return own->window == peer.Window() && !own->answer;
        });
        if (waiting != m_waiting.rend()) {
            (*waiting)->answer = result->number;
        }
    }
}

void SocketAssistTransport::Answer(AssistPeer& peer, const WindowMessage& message) {
    ++m_depth;
    const std::optional<i32> answer =
        m_receiver == nullptr ? std::nullopt : m_receiver->OnMessage(message);
    --m_depth;
    m_deepest = std::max(kDeepest, std::min(m_deepest, m_depth + 1));
    peer.Write(WrittenResult(answer.value_or(0)));
}

bool SocketAssistTransport::HasLines() const {
    return std::ranges::any_of(m_peers, [](const auto& peer) { return peer->HasLine(); });
}

void SocketAssistTransport::Arm() {
    const bool takesMore = m_depth < m_deepest;
    for (const auto& peer : m_peers) {
        if (IsLive(peer)) {
            epoll_event event{};
            event.events = EPOLLIN | (peer->WantsToWrite() ? std::uint32_t{EPOLLOUT} : 0U);
            // Remove it for a while instead of masking its events: a hang-up cannot be masked.
            const int change = !takesMore          ? EPOLL_CTL_DEL
                               : peer->IsWatched() ? EPOLL_CTL_MOD
                                                   : EPOLL_CTL_ADD;
            if (takesMore || peer->IsWatched()) {
                epoll_ctl(m_events.Number(), change, peer->Descriptor(), &event);
            }
            peer->SetWatched(takesMore);
        }
    }
    itimerspec stuck{};
    stuck.it_value = takesMore ? timespec{} : kStuckAfter;
    timerfd_settime(m_stuck.Number(), 0, &stuck, nullptr);
    if (takesMore && HasLines()) {
        const std::uint64_t one = 1;
        [[maybe_unused]] const ssize_t put = write(m_leftOver.Number(), &one, sizeof one);
    }
}

// Call only while nothing refers to a peer.
void SocketAssistTransport::DropEnded() {
    if (m_depth == 0 && m_sending == 0) {
        std::erase_if(m_peers, [](const auto& peer) { return peer->Ended() && !peer->HasLine(); });
    }
}

}  // namespace spellwick
