#include "bridge/prefix_bridge.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace spellwick::bridge {

namespace {

constexpr std::size_t kMostConnections = 32;
// The half in Wine writes a line every two seconds.
constexpr std::chrono::seconds kLongestSilence{10};
// It may be starting Wine, which can take long. One that waits for a start that was broken off
// waits for ever, and would keep the wineserver, and with it the next start, from coming to an end.
constexpr std::chrono::minutes kLongestStart{5};

pollfd ToRead(int descriptor) {
    return {descriptor, POLLIN, 0};
}

// In the order in which the windows were found.
std::string SocketName(const std::string& prefix, std::uint32_t id) {
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "%06u", id);
    return kSocketStart + prefix + '-' + digits.data() + kSocketEnd;
}

}  // namespace

PrefixBridge::~PrefixBridge() {
    while (!m_tools.empty()) {
        DropTool(m_tools.begin()->first);
    }
}

void PrefixBridge::Collect(std::vector<pollfd>& wanted) {
    LineStream& lines = m_half->Lines();
    if (!lines.Ended()) {
        wanted.push_back(ToRead(lines.Input()));
        if (lines.WantsToWrite()) {
            wanted.push_back({lines.Output(), POLLOUT, 0});
        }
    }
    for (const auto& [id, tool] : m_tools) {
        if (tool.listener && m_connections.size() < kMostConnections) {
            wanted.push_back(ToRead(tool.listener.Number()));
        }
    }
    for (const auto& [id, connection] : m_connections) {
        pollfd descriptor = ToRead(connection.stream.Input());
        if (connection.stream.WantsToWrite()) {
            descriptor.events |= POLLOUT;
        }
        wanted.push_back(descriptor);
    }
}

void PrefixBridge::Serve(Clock::time_point now) {
    m_half->Lines().Flush();
    TakeFromWine(now);
    if (now - m_lastSign > (m_ready ? kLongestSilence : kLongestStart)) {
        Say("hangs: the half in Wine");
        m_half->Kill();
        m_lastSign = now;
    }
    OfferTools();
    TakeConnections();
    TakeFromPrograms();
    DropEnded();
}

bool PrefixBridge::Ended() {
    return !m_half->Runs() || m_half->Lines().Ended();
}

void PrefixBridge::TakeFromWine(Clock::time_point now) {
    LineStream& lines = m_half->Lines();
    lines.Read();
    while (const auto text = lines.TakeLine()) {
        const auto line = ParseBridgeLine(*text);
        if (!line) {
            continue;  // a word of Wine's own
        }
        m_lastSign = now;
        const auto connection = m_connections.find(line->id);
        const auto& numbers = line->numbers;
        if (line->verb == BridgeVerb::kReady) {
            m_ready = true;
            m_half->NoteUp();
        } else if (line->verb == BridgeVerb::kTitle) {
            ShowTool(line->id, line->text);
        } else if (line->verb == BridgeVerb::kGone) {
            DropTool(line->id);
        } else if (connection == m_connections.end()) {
            continue;
        } else if (line->verb == BridgeVerb::kSend) {
            connection->second.stream.Write(
                WrittenSend({static_cast<std::uint32_t>(numbers[0]), static_cast<i32>(numbers[1]),
                             static_cast<i32>(numbers[2])}));
        } else if (line->verb == BridgeVerb::kResult) {
            connection->second.stream.Write(WrittenResult(static_cast<i32>(numbers[0])));
        }
    }
}

void PrefixBridge::ShowTool(std::uint32_t id, const std::string& title) {
    const auto [tool, isNew] = m_tools.try_emplace(id);
    // For who connects from now on; those who are connected have the title of that time.
    tool->second.title = title;
    if (isNew) {
        Say("tool \"" + title + '"');
    }
}

bool PrefixBridge::HoldsBack() const {
    return m_folder != nullptr &&
           std::ranges::any_of(m_tools, [](const auto& entry) { return !entry.second.listener; });
}

void PrefixBridge::OfferTools() {
    if (!HoldsBack() || m_folder->Rests()) {
        return;
    }
    for (auto& [id, tool] : m_tools) {
        if (tool.listener) {
            continue;
        }
        tool.socket = SocketName(m_name, id);
        tool.listener = m_folder->Listen(tool.socket);
        Say("offered: tool \"" + tool.title + "\" on " + m_folder->PathOf(tool.socket).string());
    }
}

void PrefixBridge::DropTool(std::uint32_t id) {
    const auto tool = m_tools.find(id);
    if (tool == m_tools.end()) {
        return;
    }
    if (tool->second.listener) {
        m_folder->Remove(tool->second.socket);
        m_folder->Rest();
    }
    for (auto& [number, connection] : m_connections) {
        if (connection.tool == id) {
            connection.stream.End();
        }
    }
    Say("gone: tool \"" + tool->second.title + '"');
    m_tools.erase(tool);
}

void PrefixBridge::TakeConnections() {
    for (const auto& [id, tool] : m_tools) {
        while (tool.listener && m_connections.size() < kMostConnections) {
            FileDescriptor accepted = AcceptOwn(tool.listener);
            if (!accepted) {
                break;
            }
            const std::uint32_t number = ++m_lastConnection;
            Tell({number, BridgeVerb::kOpen, {id}, {}});
            const auto connection =
                m_connections.emplace(number, Connection{id, LineStream(std::move(accepted))})
                    .first;
            connection->second.stream.Write("title " + tool.title + '\n');
        }
    }
}

void PrefixBridge::TakeFromPrograms() {
    for (auto& [id, connection] : m_connections) {
        connection.stream.Flush();
        connection.stream.Read();
        while (const auto text = connection.stream.TakeLine()) {
            Carry(id, connection, *text);
        }
    }
}

void PrefixBridge::Carry(std::uint32_t id, Connection& connection, const std::string& text) {
    const auto line = ParseAssistLine(text);
    if (line && std::holds_alternative<ResultLine>(*line)) {
        return;  // the tool has had its answer
    }
    const auto* send = line ? std::get_if<SendLine>(&*line) : nullptr;
    if (send == nullptr) {
        connection.stream.End();
        return;
    }
    const WindowMessage& message = send->message;
    Tell({id, BridgeVerb::kSend, {message.number, message.wParam, message.lParam}, {}});
}

void PrefixBridge::DropEnded() {
    for (auto at = m_connections.begin(); at != m_connections.end();) {
        if (at->second.stream.Ended()) {
            Tell({at->first, BridgeVerb::kClose, {}, {}});
            at = m_connections.erase(at);
        } else {
            ++at;
        }
    }
}

void PrefixBridge::Say(const std::string& text) const {
    if (m_verbose) {
        std::printf("%s\n", text.c_str());
        std::fflush(stdout);
    }
}

}  // namespace spellwick::bridge
