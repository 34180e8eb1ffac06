#include "link/keystroke_plan.h"

#include <algorithm>
#include <bit>
#include <optional>
#include <tuple>

#include "text/lower_case.h"
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

// A chord names its key by a digit or a small letter; a capital letter asks for Shift itself, and a
// sign may share its key with a digit that is another chord.
bool NamesItsKey(Symbol symbol) {
    if (!IsCharacter(symbol)) {
        return false;
    }
    const auto character = static_cast<char32_t>(symbol);
    const bool digit = character >= U'0' && character <= U'9';
    const bool plainLetter = character >= U'a' && character <= U'z';
    const bool modifierLetter = character >= 0x2b0 && character < 0x370;
    const bool otherLetter =
        character >= 0xdf && character != 0xf7 && character < 0x2000 && !modifierLetter;
    return digit || ((plainLetter || otherLetter) && LowerCase(character) == character);
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
    std::uint8_t group = 0;
    Symbol symbol = Symbol::kNothing;
};

// A code that can be bound, and what it is bound to by now.
struct Slot {
    Keycode code = 0;
    Symbol symbol = Symbol::kNothing;
    std::size_t usedUntil = 0;  // the number of events up to its last use
};

class Planner {
  public:
    Planner(const Keymap& keymap, std::span<const SpareBinding> lent) : m_keymap(keymap) {
        for (const ModifierKey& key : keymap.modifierKeys) {
            m_pressable = Union(m_pressable, key.modifier);
        }
        for (const Keycode code : keymap.spares) {
            m_slots.push_back({.code = code});
        }
        for (const SpareBinding& binding : lent) {
            m_slots.push_back({.code = binding.code, .symbol = binding.symbol});
        }
        m_group = keymap.group;
    }

    std::variant<KeyPlan, PlanError> Plan(std::span<const Keystroke> keystrokes) {
        bool planned = true;
        bool first = true;
        for (const Keystroke& keystroke : keystrokes) {
            m_text = keystroke.marks == Marks{} &&
                     (keystroke.symbol == Symbol::kEnter ? m_text
                                                         : !first && IsCharacter(keystroke.symbol));
            first = false;
            planned = Strike(keystroke) && planned;
        }
        if (!planned) {
            return std::move(m_error);
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
        const bool chord = *marks != 0 && NamesItsKey(keystroke.symbol);
        std::optional<Place> place = Find(keystroke.symbol);
        if (!place && chord) {
            place = FindCap(keystroke.symbol);
        }
        if (!place) {
            place = Borrow(keystroke.symbol);
        }
        if (!place) {
            return false;
        }
        place->modifiers = chord ? *marks : Union(place->modifiers, *marks);
        NoteDisturbingLocks(*place);
        m_group = place->group;
        return Emit(*place);
    }

    std::optional<ModifierMask> MaskOf(const Marks& marks) {
        ModifierMask mask = 0;
        for (const auto& [wanted, modifier, name] :
             {std::tuple(marks.alt, m_keymap.alt, "Alt"),
              std::tuple(marks.control, m_keymap.control, "Ctrl"),
              std::tuple(marks.shift, m_keymap.shift, "Shift")}) {
            if (wanted && (modifier & m_pressable) == 0) {
                Refuse(std::string("The keyboard layout has no ") + name + " key.");
                return std::nullopt;
            }
            if (wanted) {
                mask = Union(mask, modifier);
            }
        }
        return mask;
    }

    // Stays in the group of the last keystroke, so that the group changes as seldom as possible.
    std::optional<Place> Find(Symbol symbol) const {
        std::optional<Place> place = FindIn(m_group, symbol);
        if (!place && m_group != m_keymap.group) {
            place = FindIn(m_keymap.group, symbol);
        }
        for (const KeyGroup& group : m_keymap.otherGroups) {
            if (!place) {
                place = FindIn(group.number, symbol);
            }
        }
        return place;
    }

    // The key that needs the fewest modifiers.
    std::optional<Place> FindIn(std::uint8_t group, Symbol symbol) const {
        std::optional<Place> best;
        for (const Key& key : KeysOf(group)) {
            for (const KeyLevel& level : key.levels) {
                if (level.symbol == symbol && (level.modifiers & ~m_pressable) == 0 &&
                    (!best || std::popcount(level.modifiers) < std::popcount(best->modifiers)) &&
                    std::ranges::find(m_slots, key.code, &Slot::code) == m_slots.end()) {
                    best = Place{key.code, level.modifiers, group, symbol};
                }
            }
        }
        return best;
    }

    // The key that programs know by this letter or digit although it gives another.
    std::optional<Place> FindCap(Symbol symbol) const {
        const auto key = std::ranges::find(m_keymap.keys, symbol, &Key::cap);
        return key == m_keymap.keys.end()
                   ? std::nullopt
                   : std::optional(Place{key->code, 0, m_keymap.group, symbol});
    }

    const std::vector<Key>& KeysOf(std::uint8_t group) const {
        const auto other = std::ranges::find(m_keymap.otherGroups, group, &KeyGroup::number);
        return other == m_keymap.otherGroups.end() ? m_keymap.keys : other->keys;
    }

    std::optional<Place> Borrow(Symbol symbol) {
        auto slot = std::ranges::find(m_slots, symbol, &Slot::symbol);
        if (slot == m_slots.end()) {
            slot = LeastNeededSlot();
            if (slot == m_slots.end()) {
                NoteMissing(symbol);
                return std::nullopt;
            }
            slot->symbol = symbol;
            m_plan.bindings.push_back(
                {{slot->code, symbol}, slot->usedUntil, m_plan.events.size()});
        }
        return Place{slot->code, 0, m_group, symbol};
    }

    // A free one, else the one that was used longest ago.
    std::vector<Slot>::iterator LeastNeededSlot() {
        const auto free = std::ranges::find(m_slots, Symbol::kNothing, &Slot::symbol);
        return free != m_slots.end() ? free
                                     : std::ranges::min_element(m_slots, {}, &Slot::usedUntil);
    }

    void NoteMissing(Symbol symbol) {
        Refuse("The keyboard layout has no key, and no free place, for " + Describe(symbol) + ".");
        if (IsCharacter(symbol) && std::ranges::find(m_missing, symbol) == m_missing.end()) {
            m_missing.push_back(symbol);
            AppendUtf8(m_error.missing, static_cast<char32_t>(symbol));
        }
    }

    // The first reason is the one that is told.
    void Refuse(std::string reason) {
        if (m_error.text.empty()) {
            m_error.text = std::move(reason);
        }
    }

    const Key* FindKey(std::uint8_t group, Keycode code) const {
        const std::vector<Key>& keys = KeysOf(group);
        const auto found = std::ranges::find(keys, code, &Key::code);
        return found == keys.end() ? nullptr : &*found;
    }

    void NoteDisturbingLocks(const Place& place) {
        const Key* key =
            SlotOf(place.code) == m_slots.end() ? FindKey(place.group, place.code) : nullptr;
        const Symbol wanted = key == nullptr ? place.symbol : SymbolAt(*key, place.modifiers);
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

    std::vector<Slot>::iterator SlotOf(Keycode code) {
        return std::ranges::find(m_slots, code, &Slot::code);
    }

    bool Emit(const Place& place) {
        const std::optional<std::vector<Keycode>> modifiers = KeysFor(place.modifiers);
        if (!modifiers) {
            return false;
        }
        const auto add = [&](Keycode code, bool down, PauseAfter pause) {
            m_plan.events.push_back({code, down, pause, place.group, m_text});
        };
        for (const Keycode code : *modifiers) {
            add(code, true, PauseAfter::kNone);
        }
        add(place.code, true, PauseAfter::kHold);
        add(place.code, false, PauseAfter::kNone);
        for (auto code = modifiers->rbegin(); code != modifiers->rend(); ++code) {
            add(*code, false, PauseAfter::kNone);
        }
        m_plan.events.back().pause = PauseAfter::kGap;
        if (const auto slot = SlotOf(place.code); slot != m_slots.end()) {
            slot->usedUntil = m_plan.events.size();
        }
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
            Refuse(
                "The keyboard layout does not let the modifier keys in the text be held together.");
            return std::nullopt;
        }
        return codes;
    }

    // Some layouts give a modifier key another function, such as switching the layout, while
    // another modifier is held.
    std::optional<Keycode> KeyFor(ModifierMask modifier, ModifierMask held) const {
        for (const ModifierKey& candidate : m_keymap.modifierKeys) {
            const Key* key = FindKey(m_group, candidate.code);
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
    std::vector<Slot> m_slots;
    std::vector<Symbol> m_missing;
    std::uint8_t m_group = 0;  // of the last keystroke
    bool m_text = false;       // likewise
    KeyPlan m_plan;
    PlanError m_error;
};

}  // namespace

std::variant<KeyPlan, PlanError> PlanKeystrokes(std::span<const Keystroke> keystrokes,
                                                const Keymap& keymap,
                                                std::span<const SpareBinding> lent) {
    return Planner(keymap, lent).Plan(keystrokes);
}

}  // namespace spellwick
