// The numbers of an assist tool: its messages, the items that it counts, the skills.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace spellwick::practice {

// From a program to the tool.
inline constexpr std::uint32_t kCountMessage = 0x465;
inline constexpr std::uint32_t kRegisterMessage = 0x4C8;  // wParam: the window to report to

// From the tool.
inline constexpr std::uint32_t kStockMessage = 0x52D;
inline constexpr std::uint32_t kCastMessage = 0x52E;
inline constexpr std::uint32_t kLoginMessage = 0x52F;
inline constexpr std::uint32_t kMageryMessage = 0x530;
inline constexpr std::uint32_t kManaMessage = 0x531;
inline constexpr std::uint32_t kSkillMessage = 0x532;
inline constexpr std::uint32_t kLogoutMessage = 0x534;
inline constexpr std::uint32_t kHitsMessage = 0x535;
inline constexpr std::uint32_t kStaminaMessage = 0x536;

struct StockItem {
    int number;
    std::string_view code;
    std::string_view name;
    int atStart;
};

inline constexpr std::size_t kTithing = 13;  // index in the table
inline constexpr std::array<StockItem, 14> kStockItems{{
    {1, "BM", "Bloodmoss", 80},
    {2, "BP", "Black Pearl", 120},
    {3, "GA", "Garlic", 60},
    {4, "GI", "Ginseng", 60},
    {5, "MR", "Mandrake Root", 150},
    {6, "NI", "Nightshade", 40},
    {7, "SA", "Sulphurous Ash", 90},
    {8, "SS", "Spider Silk", 75},
    {100, "BW", "Bat Wing", 30},
    {101, "DB", "Daemon Blood", 20},
    {102, "GD", "Grave Dust", 40},
    {103, "NC", "Nox Crystal", 15},
    {104, "PI", "Pig Iron", 25},
    {200, "", "Tithing points", 15000},
}};

struct KnownSkill {
    int number;
    std::string_view name;
    int atStart;  // tenths of a point
};

inline constexpr int kSkillCount = 58;
inline constexpr int kMagerySkill = 25;
// The skills that matter to a caster; the others are not named here.
inline constexpr std::array<KnownSkill, 7> kCasterSkills{{
    {16, "Evaluating Intelligence", 1000},
    {25, "Magery", 1000},
    {26, "Resisting Spells", 850},
    {32, "Spirit Speak", 700},
    {46, "Meditation", 920},
    {49, "Necromancy", 800},
    {51, "Chivalry", 655},
}};

}  // namespace spellwick::practice
