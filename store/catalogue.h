// The catalogue of keys: every key of the settings store with its default and its variable.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "model/shared_state.h"

namespace spellwick {

template <typename Cell>
struct KeyOf {
    std::string_view key;
    Cell SharedState::*cell;
    Cell fallback;
};

// Global options.
inline constexpr KeyOf<bool> kDisableCastingKey{"DisableCasting", &SharedState::DisableCasting,
                                                true};
inline constexpr KeyOf<bool> kDisplayVerticalKey{"DisplayVertical", &SharedState::DisplayVertical,
                                                 false};
inline constexpr KeyOf<bool> kAlwaysOnTopKey{"AlwaysOnTop", &SharedState::AlwaysOnTop, false};
inline constexpr KeyOf<bool> kShowNecroRegsKey{"ShowNecroRegs", &SharedState::ShowNecroRegs, true};
inline constexpr KeyOf<bool> kMeditateKey{"Meditate", &SharedState::Meditate, false};
inline constexpr KeyOf<bool> kCheckFrontKey{"TypeOnlyInFront", &SharedState::CheckFront, true};
inline constexpr KeyOf<bool> kEnterOpensChatKey{"EnterOpensChat", &SharedState::EnterOpensChat,
                                                false};
inline constexpr KeyOf<bool> kFindWineToolsKey{"FindWineTools", &SharedState::FindWineTools, false};
inline constexpr KeyOf<bool> kKeysOnIconsKey{"KeysOnIcons", &SharedState::KeysOnIcons, false};
inline constexpr KeyOf<bool> kSecondsOnIconsKey{"SecondsOnIcons", &SharedState::SecondsOnIcons,
                                                false};
inline constexpr std::array kSwitchKeys{kDisableCastingKey, kDisplayVerticalKey, kAlwaysOnTopKey,
                                        kShowNecroRegsKey,  kMeditateKey,        kCheckFrontKey,
                                        kEnterOpensChatKey, kFindWineToolsKey,   kKeysOnIconsKey,
                                        kSecondsOnIconsKey};

// The pace of texts, in milliseconds: saved when it is changed, like a switch. A value that is no
// number or out of its range counts as the default. docs/performance.md says how they were found.
struct PaceKey {
    std::string_view key;
    i16 SharedState::*cell;
    i16 fallback;
};
inline constexpr i16 kShortestPace = 1;
inline constexpr i16 kLongestPace = 200;
inline constexpr PaceKey kTextHoldKey{"TextHold", &SharedState::TextHold, 4};
inline constexpr PaceKey kTextGapKey{"TextGap", &SharedState::TextGap, 4};
inline constexpr std::array kPaceKeys{kTextHoldKey, kTextGapKey};
inline constexpr std::array<KeyOf<i16>, 2> kLimitKeys{{
    {"MeditateLevel", &SharedState::MeditateLevel, 20},
    {"RegYellow", &SharedState::RegYellow, 3},
}};
inline constexpr KeyOf<i32> kColorWarnKey{"ColorWarn", &SharedState::ColorWarn, 65535};
inline constexpr KeyOf<i32> kTimerModeKey{"SpellTimerMode", &SharedState::SpellTimerMode, 2};

inline constexpr std::string_view kPlayerNameKey = "CurrentPlayerName";  // text, none
inline constexpr std::string_view kPicturesKey = "Pictures";             // 0 or 1, 0
inline constexpr std::string_view kConversionKey = "Conversion";         // text, none

// Positions in twips, 0.
inline constexpr std::string_view kWindowTopKey = "WindowTop";
inline constexpr std::string_view kWindowLeftKey = "WindowLeft";
inline constexpr std::string_view kTimerTopKey = "TimerTop";
inline constexpr std::string_view kTimerLeftKey = "TimerLeft";
inline constexpr std::string_view kSettingsTopKey = "SettingsTop";
inline constexpr std::string_view kSettingsLeftKey = "SettingsLeft";

// Addresses that a user may add by hand.
inline constexpr std::string_view kGuildPageKey = "URL LHWS";
inline constexpr std::string_view kHomePageKey = "URL Mira";

// Keys of a player.
inline constexpr std::string_view kTithingKey = "CurrentTithing";  // number with a blank, 0
inline constexpr std::array<KeyOf<i16>, 3> kBagChoiceKeys{{
    {"CurrentReagentBag", &SharedState::CurrentReagentBag, 0},
    {"LeftReagentBag", &SharedState::LeftReagentBag, 0},
    {"RightReagentBag", &SharedState::RightReagentBag, 1},
}};
inline constexpr std::array<KeyOf<i16>, 9> kSkillKeys{{
    {"EvalInt", &SharedState::EvalInt, 0},
    {"Magery", &SharedState::Magery, 0},
    {"TargetResist", &SharedState::TargetResist, 0},
    {"Necro", &SharedState::Necro, 0},
    {"Chivalry", &SharedState::Chivalry, 0},
    {"SpiritSpeak", &SharedState::SpiritSpeak, 0},
    {"Intelligence", &SharedState::Intelligence, 0},
    {"Dexterity", &SharedState::Dexterity, 0},
    {"TargetInt", &SharedState::TargetInt, 0},
}};
inline constexpr std::array<KeyOf<i16>, 2> kSendKeys{{
    {"SendSpellText", &SharedState::SendSpellText, 1},
    {"SendSpellSuffix", &SharedState::SendSpellSuffix, 0},
}};
inline constexpr std::string_view kSuffixKey = "SpellTextSuffix";
inline constexpr std::string_view kDefaultSuffix = "... Alakazam ...";
inline constexpr i16 kDefaultSpellbook = 1;  // not in the book

inline constexpr i32 kUserCells = 16;  // cells of the user pages that are saved

// Keys with numbers in them.
std::string SpellRegsKey(i32 row);           // "SpellRegs 1" for row 0
std::string InTownKey(i32 row);              // "InTown 0" for row 0
std::string MacroCodeKey(i32 number);        // "Macro 1", "Macro-1"
std::string BagNameKey(i32 bag);             // "Bag 0"
std::string StockKey(i32 reagent, i32 bag);  // "MR 0"
std::string UserSpellKey(i32 cell);          // "User1" for cell 0
std::string SpellbookKey(i32 row);           // "Spellbook 0" for row 0
std::string SpellTextKey(i32 row);           // "SpellText 1 5" for row 13

}  // namespace spellwick
