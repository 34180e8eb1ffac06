#include "link/keystroke_plan.h"

#include <algorithm>
#include <bit>
#include <optional>
#include <tuple>

#include "text/utf8.h"

namespace spellwick {

namespace {

constexpr ModifierMask Union(ModifierMask one, ModifierMask other) {
    return static_cast<ModifierMask>(one | other);
}

// Programs capitalise letters themselves if the key ignores Caps Lock. Which characters they take
// for letters is unknown, so treat everything beyond ASCII as one.
constexpr bool MayHaveCapital(Symbol symbol) {
    return (symbol >= CharacterSymbol(U'a') && symbol <= CharacterSymbol(U'z')) ||
           (symbol >= CharacterSymbol(U'A') && symbol <= CharacterSymbol(U'Z')) ||
           (IsCharacter(symbol) && symbol >= CharacterSymbol(0x80));
}

std::string Describe(Symbol symbol) {
    if (!IsCharacter(symbol)) {
        return "one of the keys in the text";
    }
    std::string description = "the character ";
    AppendUtf8(description, static_cast<char32_t>(symbol));
    return description;
}

// A key, and the modifiers to hold with it.
struct Place {
    Keycode code = 0;
    ModifierMask modifiers = 0;
};

class Planner {
  public:
    explicit Planner(const Keymap& keymap) : m_keymap(keymap) {
        for (const ModifierKey& key : keymap.modifierKeys) {
            m_pressable = Union(m_pressable, key.modifier);
        }
    }

    std::variant<KeyPlan, PlanError> Plan(std::span<const Keystroke> keystrokes) {
        for (const Keystroke& keystroke : keystrokes) {
            if (!Strike(keystroke)) {
                return std::move(m_error);
            }
        }
        const auto unclear = static_cast<unsigned>(m_keymap.capsLock | m_keymap.numLock);
        const ModifierMask active = Union(m_keymap.locked, m_keymap.latched);
        m_plan.unlock = Union(m_disturbing, static_cast<ModifierMask>(active & ~unclear));
        if (std::ranges::find(keystrokes, Symbol::kCapsLock, &Keystroke::symbol) !=
            keystrokes.end()) {
            m_plan.unlock = static_cast<ModifierMask>(m_plan.unlock & ~m_keymap.capsLock);
        }
        m_plan.relock = static_cast<ModifierMask>(m_plan.unlock & m_keymap.locked);
        ReleaseWhatIsHeld();
        return std::move(m_plan);
    }

  private:
    bool Strike(const Keystroke& keystroke) {
        const std::optional<ModifierMask> marks = MaskOf(keystroke.marks);
        if (!marks) {
            return false;
        }
        std::optional<Place> place = Find(keystroke.symbol);
        if (!place) {
            place = Borrow(keystroke.symbol);
        }
        if (!place) {
            return false;
        }
        place->modifiers = Union(place->modifiers, *marks);
        NoteDisturbingLocks(*place);
        return Emit(*place);
    }

    std::optional<ModifierMask> MaskOf(const Marks& marks) {
        ModifierMask mask = 0;
        for (const auto& [wanted, modifier, name] :
             {std::tuple(marks.alt, m_keymap.alt, "Alt"),
              std::tuple(marks.control, m_keymap.control, "Ctrl"),
              std::tuple(marks.shift, m_keymap.shift, "Shift")}) {
            if (wanted && (modifier & m_pressable) == 0) {
                m_error = std::string("The keyboard layout has no ") + name + " key.";
                return std::nullopt;
            }
            if (wanted) {
                mask = Union(mask, modifier);
            }
        }
        return mask;
    }

    // The key that needs the fewest modifiers.
    std::optional<Place> Find(Symbol symbol) const {
        std::optional<Place> best;
        for (const Key& key : m_keymap.keys) {
            for (const KeyLevel& level : key.levels) {
                if (level.symbol == symbol && (level.modifiers & ~m_pressable) == 0 &&
                    (!best || std::popcount(level.modifiers) < std::popcount(best->modifiers))) {
                    best = Place{key.code, level.modifiers};
                }
            }
        }
        return best;
    }

    std::optional<Place> Borrow(Symbol symbol) {
        const auto before = std::ranges::find(m_plan.bindings, symbol, &SpareBinding::symbol);
        if (before != m_plan.bindings.end()) {
            return Place{before->code, 0};
        }
        if (m_plan.bindings.size() >= m_keymap.spares.size()) {
            m_error =
                "The keyboard layout has no key, and no free place, for " + Describe(symbol) + ".";
            return std::nullopt;
        }
        const Keycode code = m_keymap.spares[m_plan.bindings.size()];
        m_plan.bindings.push_back({code, symbol});
        return Place{code, 0};
    }

    const Key* FindKey(Keycode code) const {
        const auto found = std::ranges::find(m_keymap.keys, code, &Key::code);
        return found == m_keymap.keys.end() ? nullptr : &*found;
    }

    void NoteDisturbingLocks(const Place& place) {
        const Key* key = FindKey(place.code);
        const Symbol borrowed = BorrowedSymbol(place.code);
        const Symbol wanted = key == nullptr ? borrowed : SymbolAt(*key, place.modifiers);
        const ModifierMask active = Union(m_keymap.locked, m_keymap.latched);
        for (const ModifierMask lock : {m_keymap.capsLock, m_keymap.numLock}) {
            if ((active & lock) == 0) {
                continue;
            }
            const bool known = key != nullptr && (key->relevant & lock) != 0;
            const bool changes = known ? SymbolAt(*key, Union(place.modifiers, lock)) != wanted
                                       : lock == m_keymap.capsLock && MayHaveCapital(wanted);
            if (changes) {
                m_disturbing = Union(m_disturbing, lock);
            }
        }
    }

    Symbol BorrowedSymbol(Keycode code) const {
        const auto found = std::ranges::find(m_plan.bindings, code, &SpareBinding::code);
        return found == m_plan.bindings.end() ? Symbol::kNothing : found->symbol;
    }

    bool Emit(const Place& place) {
        const std::optional<std::vector<Keycode>> modifiers = KeysFor(place.modifiers);
        if (!modifiers) {
            return false;
        }
        for (const Keycode code : *modifiers) {
            m_plan.events.push_back({code, true, PauseAfter::kNone});
        }
        m_plan.events.push_back({place.code, true, PauseAfter::kHold});
        m_plan.events.push_back({place.code, false, PauseAfter::kNone});
        for (auto code = modifiers->rbegin(); code != modifiers->rend(); ++code) {
            m_plan.events.push_back({*code, false, PauseAfter::kNone});
        }
        m_plan.events.back().pause = PauseAfter::kGap;
        return true;
    }

    // The keys to press, in order, for exactly these modifiers.
    std::optional<std::vector<Keycode>> KeysFor(ModifierMask modifiers) {
        std::vector<Keycode> codes;
        ModifierMask held = 0;
        const auto press = [&](ModifierMask modifier) {
            const std::optional<Keycode> code = KeyFor(modifier, held);
            codes.push_back(code.value_or(0));
            held = Union(held, modifier);
            return code.has_value();
        };
        bool found = true;
        for (const ModifierMask modifier : {m_keymap.alt, m_keymap.control, m_keymap.shift}) {
            if (found && (modifiers & modifier & ~held) != 0) {
                found = press(modifier);
            }
        }
        for (unsigned bit = 1; found && bit <= 0x80; bit <<= 1) {
            if ((modifiers & bit & ~held) != 0) {
                found = press(static_cast<ModifierMask>(bit));
            }
        }
        if (!found) {
            m_error =
                "The keyboard layout does not let the modifier keys in the text be held together.";
            return std::nullopt;
        }
        return codes;
    }

    // Some layouts give a modifier key another function, such as switching the layout, while
    // another modifier is held.
    std::optional<Keycode> KeyFor(ModifierMask modifier, ModifierMask held) const {
        for (const ModifierKey& candidate : m_keymap.modifierKeys) {
            const Key* key = FindKey(candidate.code);
            if (candidate.modifier == modifier &&
                (key == nullptr || SymbolAt(*key, held) == Symbol::kModifier)) {
                return candidate.code;
            }
        }
        return std::nullopt;
    }

    void ReleaseWhatIsHeld() {
        for (const Keycode code : m_keymap.down) {
            const bool modifier =
                std::ranges::find(m_keymap.modifierKeys, code, &ModifierKey::code) !=
                m_keymap.modifierKeys.end();
            const bool used =
                std::ranges::find(m_plan.events, code, &KeyEvent::code) != m_plan.events.end();
            if (modifier || used) {
                m_plan.releaseFirst.push_back(code);
            }
        }
    }

    const Keymap& m_keymap;
    ModifierMask m_pressable = 0;
    ModifierMask m_disturbing = 0;
    KeyPlan m_plan;
    PlanError m_error;
};

}  // namespace

std::variant<KeyPlan, PlanError> PlanKeystrokes(std::span<const Keystroke> keystrokes,
                                                const Keymap& keymap) {
    return Planner(keymap).Plan(keystrokes);
}

}  // namespace spellwick
