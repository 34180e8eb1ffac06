// The numbers of the messages between this program and the assist tool.
#pragma once

#include <cstdint>
#include <string_view>

namespace spellwick {

// What the title of its window begins with.
inline constexpr std::string_view kAssistTitleStart = "UOAssist";

// To the tool.
inline constexpr std::uint32_t kAssistRegister = 0x4C8;  // wParam: our window; answer 1 = accepted
inline constexpr std::uint32_t kAssistCount = 0x465;

// From the tool.
inline constexpr std::uint32_t kAssistStock = 0x52D;   // wParam: what is counted; lParam: the count
inline constexpr std::uint32_t kAssistCast = 0x52E;    // wParam: the tool's spell number
inline constexpr std::uint32_t kAssistThere = 0x52F;   // the tool announces itself
inline constexpr std::uint32_t kAssistMagery = 0x530;  // wParam: whole points
inline constexpr std::uint32_t kAssistStats = 0x531;   // wParam: Intelligence; lParam: mana
inline constexpr std::uint32_t kAssistSkill = 0x532;   // wParam: skill; lParam: tenths of a point

// What a stock report counts if no reagent.
inline constexpr std::int32_t kTithingReport = 200;

inline constexpr int kAccepted = 1;

}  // namespace spellwick
