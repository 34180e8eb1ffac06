// What an assist tool writes to its socket: the same bytes give the same lines however they are
// split; a malformed line ends the connection; what the program writes it can read back.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include <fcntl.h>
#include <sys/socket.h>

#include "platform/linux/assist_peer.h"

namespace {

using namespace spellwick;

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

std::vector<std::string> Lines(std::string_view bytes, std::size_t piece) {
    AssistLineReader reader;
    std::vector<std::string> lines;
    while (!bytes.empty()) {
        const std::string_view part = bytes.substr(0, piece);
        bytes.remove_prefix(part.size());
        reader.Append(part);
        while (reader.HasLine()) {
            const auto line = reader.TakeLine();
            Require(line.has_value());
            Require(line->size() < kLongestAssistLine && line->find('\n') == std::string::npos);
            lines.push_back(*line);
        }
        if (reader.Broken()) {
            Require(!reader.TakeLine());
            break;
        }
    }
    return lines;
}

void RequireReadBack(const AssistLine& line) {
    std::string written;
    if (const auto* sent = std::get_if<SendLine>(&line)) {
        written = WrittenSend(sent->message);
    } else if (const auto* result = std::get_if<ResultLine>(&line)) {
        written = WrittenResult(result->number);
    } else {
        written = "title " + std::get<TitleLine>(line).title + '\n';
    }
    Require(written.ends_with('\n') && written.size() <= kLongestAssistLine);
    written.pop_back();
    Require(ParseAssistLine(written) == line);
}

// The number of well-formed lines before the first malformed one. The title must come first, and
// once.
std::size_t GoodLines(const std::vector<std::string>& lines) {
    std::size_t good = 0;
    while (good < lines.size()) {
        const auto line = ParseAssistLine(lines[good]);
        if (!line || std::holds_alternative<TitleLine>(*line) != (good == 0)) {
            break;
        }
        ++good;
    }
    return good;
}

// Over a real connection: lines up to the first malformed one, then the end.
void TryPeer(std::string_view bytes, const std::vector<std::string>& lines) {
    std::array<int, 2> ends{};
    Require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) == 0);
    AssistPeer peer("fuzz.sock", 1, FileDescriptor(ends[0]));
    const FileDescriptor tool(ends[1]);
    std::size_t taken = 0;
    while (!bytes.empty() && !peer.Ended()) {
        const std::string_view part = bytes.substr(0, 4096);
        bytes.remove_prefix(part.size());
        Require(send(tool.Number(), part.data(), part.size(), MSG_NOSIGNAL) ==
                static_cast<ssize_t>(part.size()));
        for (int reads = 0; reads < 4; ++reads) {
            peer.Read();
            while (const auto line = peer.TakeLine()) {
                Require(taken < lines.size());
                Require(ParseAssistLine(lines[taken]) == *line);
                ++taken;
            }
        }
    }
    Require(taken == GoodLines(lines));
    Require(peer.Ended() || (!peer.HasLine() && taken == lines.size()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t piece = size == 0 ? 1 : data[0] % 64U + 1U;
    const std::vector<std::string> lines = Lines(bytes, bytes.size() + 1);
    const std::vector<std::string> inPieces = Lines(bytes, piece);
    Require(lines == inPieces);
    for (const std::string& line : lines) {
        if (const auto parsed = ParseAssistLine(line)) {
            RequireReadBack(*parsed);
        }
    }
    TryPeer(bytes, lines);
    return 0;
}
