#include "link/keystroke_parse.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

#include "text/lower_case.h"
#include "text/utf8.h"

namespace spellwick {

namespace {

struct KeyName {
    std::string_view name;
    Symbol symbol;
};

constexpr Symbol FunctionKey(std::uint32_t number) {
    return static_cast<Symbol>(static_cast<std::uint32_t>(Symbol::kF1) + number - 1);
}

constexpr std::array kKeyNames{
    KeyName{"backspace", Symbol::kBackspace},
    KeyName{"bksp", Symbol::kBackspace},
    KeyName{"break", Symbol::kPause},
    KeyName{"bs", Symbol::kBackspace},
    KeyName{"capslock", Symbol::kCapsLock},
    KeyName{"clear", Symbol::kClear},
    KeyName{"del", Symbol::kDelete},
    KeyName{"delete", Symbol::kDelete},
    KeyName{"down", Symbol::kDown},
    KeyName{"end", Symbol::kEnd},
    KeyName{"enter", Symbol::kEnter},
    KeyName{"esc", Symbol::kEscape},
    KeyName{"escape", Symbol::kEscape},
    KeyName{"f1", FunctionKey(1)},
    KeyName{"f10", FunctionKey(10)},
    KeyName{"f11", FunctionKey(11)},
    KeyName{"f12", FunctionKey(12)},
    KeyName{"f13", FunctionKey(13)},
    KeyName{"f14", FunctionKey(14)},
    KeyName{"f15", FunctionKey(15)},
    KeyName{"f16", FunctionKey(16)},
    KeyName{"f2", FunctionKey(2)},
    KeyName{"f3", FunctionKey(3)},
    KeyName{"f4", FunctionKey(4)},
    KeyName{"f5", FunctionKey(5)},
    KeyName{"f6", FunctionKey(6)},
    KeyName{"f7", FunctionKey(7)},
    KeyName{"f8", FunctionKey(8)},
    KeyName{"f9", FunctionKey(9)},
    KeyName{"help", Symbol::kHelp},
    KeyName{"home", Symbol::kHome},
    KeyName{"ins", Symbol::kInsert},
    KeyName{"insert", Symbol::kInsert},
    KeyName{"left", Symbol::kLeft},
    KeyName{"numlock", Symbol::kNumLock},
    KeyName{"pgdn", Symbol::kPageDown},
    KeyName{"pgup", Symbol::kPageUp},
    KeyName{"prtsc", Symbol::kPrint},
    KeyName{"right", Symbol::kRight},
    KeyName{"scrolllock", Symbol::kScrollLock},
    KeyName{"space", CharacterSymbol(U' ')},
    KeyName{"tab", Symbol::kTab},
    KeyName{"up", Symbol::kUp},
};

std::optional<Symbol> NamedKey(std::string_view name) {
    const std::string lower = LowerCase(name);
    const auto* found = std::ranges::find(kKeyNames, lower, &KeyName::name);
    return found == kKeyNames.end() ? std::nullopt : std::optional(found->symbol);
}

constexpr bool IsControl(char32_t character) {
    return character < 0x20 || (character >= 0x7f && character < 0xa0);
}

class Scanner {
  public:
    explicit Scanner(std::string_view text) : m_rest(text) {}

    std::vector<Keystroke> Scan() {
        while (!m_rest.empty()) {
            if (!TakeMark() && !TakeBraces()) {
                TakeCharacter();
            }
        }
        return std::move(m_keystrokes);
    }

  private:
    bool TakeMark() {
        switch (m_rest.front()) {
            case '%':
                m_marks.alt = true;
                break;
            case '^':
                m_marks.control = true;
                break;
            case '+':
                m_marks.shift = true;
                break;
            default:
                return false;
        }
        m_rest.remove_prefix(1);
        return true;
    }

    // Takes "{...}" if it names a key or holds one character.
    bool TakeBraces() {
        if (m_rest.front() != '{') {
            return false;
        }
        std::string_view inside = m_rest.substr(1);
        if (inside.starts_with("{}") || inside.starts_with("}}")) {
            Add(CharacterSymbol(static_cast<char32_t>(inside.front())));
            m_rest.remove_prefix(3);
            return true;
        }
        const std::size_t end = inside.find_first_of("{}");
        if (end == std::string_view::npos || inside[end] == '{' || end == 0) {
            return false;
        }
        inside = inside.substr(0, end);
        const std::string_view after = m_rest.substr(end + 2);
        if (const std::optional<Symbol> named = NamedKey(inside)) {
            Add(*named);
        } else if (!TakeSingle(inside)) {
            TakeAsItStands(m_rest.substr(0, end + 2));
        }
        m_rest = after;
        return true;
    }

    bool TakeSingle(std::string_view inside) {
        const char32_t character = TakeCodePoint(inside);
        if (!inside.empty() || IsControl(character)) {
            return false;
        }
        Add(CharacterSymbol(character));
        return true;
    }

    void TakeAsItStands(std::string_view text) {
        const std::string_view after = m_rest.substr(text.size());
        m_rest = text;
        while (!m_rest.empty()) {
            TakeCharacter();
        }
        m_rest = after;
    }

    void TakeCharacter() {
        const char32_t character = TakeCodePoint(m_rest);
        if (character == U'\r' && m_rest.starts_with('\n')) {
            m_rest.remove_prefix(1);
        }
        if (character == U'\n' || character == U'\r') {
            Add(Symbol::kEnter);
        } else if (character == U'\t') {
            Add(Symbol::kTab);
        } else if (!IsControl(character)) {
            Add(CharacterSymbol(character));
        }
    }

    void Add(Symbol symbol) { m_keystrokes.push_back({std::exchange(m_marks, {}), symbol}); }

    std::string_view m_rest;
    Marks m_marks;
    std::vector<Keystroke> m_keystrokes;
};

}  // namespace

std::vector<Keystroke> ParseKeystrokes(std::string_view text) {
    return Scanner(text).Scan();
}

}  // namespace spellwick
