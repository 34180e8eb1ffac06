// The lines that pass between the two halves of the bridge, by the standard input and output of the
// half in Wine. Each begins with a number that tells tools' windows, or connections, apart:
//
//   from Wine   0 ready              the first search is done; again every two seconds
//               WINDOW title TEXT    a tool's window, or its new title
//               WINDOW gone
//               CONNECTION send MESSAGE WPARAM LPARAM
//               CONNECTION result NUMBER
//   into Wine   CONNECTION open WINDOW
//               CONNECTION close
//               CONNECTION send MESSAGE WPARAM LPARAM
//
// They end in a line feed, are UTF-8, and have at most 512 bytes. Numbers are decimal.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace spellwick::bridge {

inline constexpr std::size_t kLongestBridgeLine = 512;  // bytes, including the line end
// Bytes of a title; a longer one is cut. Leaves room for what stands before it.
inline constexpr std::size_t kLongestBridgeTitle = 480;

enum class BridgeVerb { kReady, kTitle, kGone, kOpen, kClose, kSend, kResult };

struct BridgeLine {
    std::uint32_t id = 0;
    BridgeVerb verb = BridgeVerb::kReady;
    std::array<std::int64_t, 3> numbers{};  // as many as the verb has
    std::string text;                       // of a title

    bool operator==(const BridgeLine&) const = default;
};

// A line without its end; nothing for any other text. Numbers have 32 bits, with or without a sign.
std::optional<BridgeLine> ParseBridgeLine(std::string_view line);

// With the line end. Control characters of a title become blanks.
std::string WrittenBridgeLine(const BridgeLine& line);

}  // namespace spellwick::bridge
