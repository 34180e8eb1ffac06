#include "store/client_keys.h"

#include <algorithm>
#include <array>

#include "model/book_order.h"
#include "model/shared_state.h"
#include "text/characters.h"
#include "text/lower_case.h"
#include "text/utf8.h"

namespace spellwick {

namespace {

constexpr i32 kUseSkill = 13;
constexpr i32 kCastSpellCode = 15;
constexpr i32 kMeditationSkill = 47;

constexpr i32 kMageryBefore = 61;  // subcode of the first Magery spell, less 1
constexpr i32 kMageryCount = 64;
constexpr i32 kFirstNecromancy = 126;
constexpr i32 kFirstChivalry = 143;

// Keys without a character have the number of their place on the keyboard and this bit.
constexpr i32 kPlaceBit = 1 << 30;
constexpr i32 kFirstFunctionKey = kPlaceBit + 58;  // F1
constexpr i32 kFunctionKeyCount = 12;

struct KeyName {
    i32 code;
    std::string_view name;
};

constexpr std::array<KeyName, 29> kKeyNames{{
    {8, "Backspace"},
    {9, "Tab"},
    {13, "Enter"},
    {27, "Escape"},
    {127, "Delete"},
    {kPlaceBit + 57, "Caps Lock"},
    {kPlaceBit + 70, "Print Screen"},
    {kPlaceBit + 71, "Scroll Lock"},
    {kPlaceBit + 72, "Pause"},
    {kPlaceBit + 73, "Insert"},
    {kPlaceBit + 74, "Home"},
    {kPlaceBit + 75, "Page Up"},
    {kPlaceBit + 77, "End"},
    {kPlaceBit + 78, "Page Down"},
    {kPlaceBit + 79, "Right"},
    {kPlaceBit + 80, "Left"},
    {kPlaceBit + 81, "Down"},
    {kPlaceBit + 82, "Up"},
    {kPlaceBit + 83, "Num Lock"},
    {kPlaceBit + 84, "Keypad /"},
    {kPlaceBit + 85, "Keypad *"},
    {kPlaceBit + 86, "Keypad -"},
    {kPlaceBit + 87, "Keypad +"},
    {kPlaceBit + 88, "Keypad Enter"},
    {kPlaceBit + 98, "Keypad 0"},
    {kPlaceBit + 99, "Keypad ."},
    {kPlaceBit + 101, "Menu"},
    {kPlaceBit + 224, "Ctrl"},
    {kPlaceBit + 225, "Shift"},
}};

constexpr i32 kFirstKeypadDigit = kPlaceBit + 89;        // 1 to 9
constexpr i32 kFirstUpperFunctionKey = kPlaceBit + 104;  // F13 to F24

// These characters hold a modifier or begin a name where keys are typed.
constexpr std::string_view kNotation = "+^%{";

bool IsCharacter(i32 code) {
    const bool isControl = code < ' ' || (code >= 0x7f && code < 0xa0);
    const bool isSurrogate = code >= 0xd800 && code < 0xe000;
    return !isControl && !isSurrogate && code <= 0x10ffff;
}

std::string Utf8Of(i32 code) {
    std::string text;
    AppendUtf8(text, static_cast<char32_t>(code));
    return text;
}

bool IsTyped(std::string_view character) {
    return kNotation.find(character) == std::string_view::npos && LowerCase(character) == character;
}

}  // namespace

std::optional<i32> MacroOfAction(const ClientAction& action) {
    if (action.code == kUseSkill && action.subcode == kMeditationSkill) {
        return kMeditationMacro;
    }
    if (action.code != kCastSpellCode || action.subcode <= kMageryBefore) {
        return std::nullopt;
    }
    if (action.subcode <= kMageryBefore + kMageryCount) {
        return action.subcode - kMageryBefore;
    }
    const std::optional<i32> row =
        action.subcode < kFirstChivalry
            ? RowInBook(kNecromancyBook, action.subcode - kFirstNecromancy)
            : RowInBook(kChivalryBook, action.subcode - kFirstChivalry);
    return row ? std::optional(*row + 1) : std::nullopt;
}

std::optional<ClientAction> ActionOfMacro(i32 number) {
    if (number == kMeditationMacro) {
        return ClientAction{kUseSkill, kMeditationSkill};
    }
    if (number >= 1 && number <= kMageryCount) {
        return ClientAction{kCastSpellCode, kMageryBefore + number};
    }
    if (const auto place = PlaceInBook(kNecromancyBook, number - 1)) {
        return ClientAction{kCastSpellCode, kFirstNecromancy + *place};
    }
    if (const auto place = PlaceInBook(kChivalryBook, number - 1)) {
        return ClientAction{kCastSpellCode, kFirstChivalry + *place};
    }
    return std::nullopt;
}

std::optional<std::string> MacroKeyOfCode(i32 code) {
    if (code >= kFirstFunctionKey && code < kFirstFunctionKey + kFunctionKeyCount) {
        return "{F" + std::to_string(code - kFirstFunctionKey + 1) + "}";
    }
    if (!IsCharacter(code) || !IsTyped(Utf8Of(code))) {
        return std::nullopt;
    }
    return Utf8Of(code);
}

std::optional<i32> CodeOfMacroKey(std::string_view key) {
    const std::string small = LowerCase(key);
    if (CountCharacters(small) == 1) {
        std::string_view rest = small;
        const auto code = static_cast<i32>(TakeCodePoint(rest));
        return MacroKeyOfCode(code) ? std::optional(code) : std::nullopt;
    }
    for (i32 code = kFirstFunctionKey; code < kFirstFunctionKey + kFunctionKeyCount; ++code) {
        if (MacroKeyOfCode(code) == key) {
            return code;
        }
    }
    return std::nullopt;
}

std::string NameOfCode(i32 code) {
    if (const auto* const found = std::ranges::find(kKeyNames, code, &KeyName::code);
        found != kKeyNames.end()) {
        return std::string(found->name);
    }
    if (code >= kFirstKeypadDigit && code < kFirstKeypadDigit + 9) {
        return "Keypad " + std::to_string(code - kFirstKeypadDigit + 1);
    }
    if (code >= kFirstUpperFunctionKey && code < kFirstUpperFunctionKey + kFunctionKeyCount) {
        return "F" + std::to_string(code - kFirstUpperFunctionKey + 1 + kFunctionKeyCount);
    }
    return IsCharacter(code) ? Utf8Of(code) : std::to_string(code);
}

}  // namespace spellwick
