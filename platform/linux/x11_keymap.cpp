#include "platform/linux/x11_keymap.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>

#include <xkbcommon/xkbcommon-x11.h>

#include "platform/linux/x11_symbols.h"
#include "platform/linux/xcb_xkb.h"

namespace spellwick {

namespace {

constexpr ModifierMask kRealModifiers = 0xff;

struct FreeXkb {
    void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state* state) const { xkb_state_unref(state); }
};

// One reading of the server's keymap and state, key by key.
class Reader {
  public:
    Reader(xkb_keymap* map, xkb_state* state, const xcb_get_modifier_mapping_reply_t* modifiers)
        : m_map(map), m_state(state) {
        const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(modifiers);
        for (int index = 0; index < 8 * modifiers->keycodes_per_modifier; ++index) {
            if (codes[index] != 0) {
                const auto bit = static_cast<ModifierMask>(
                    1U << static_cast<unsigned>(index / modifiers->keycodes_per_modifier));
                m_modifierOf.emplace(codes[index], bit);
            }
        }
    }

    Keymap Read() {
        for (xkb_keycode_t code = xkb_keymap_min_keycode(m_map); code <= LastCode(); ++code) {
            ReadKey(code);
        }
        std::ranges::stable_sort(m_candidates, {}, &Candidate::rank);
        for (const Candidate& candidate : m_candidates) {
            m_result.modifierKeys.push_back(candidate.key);
        }
        // Low codes belong to keys of some keyboards, even if not of this one.
        std::ranges::reverse(m_result.spares);
        return std::move(m_result);
    }

    // What the keys give in the state's group alone.
    std::vector<Key> ReadGroup() const {
        std::vector<Key> keys;
        for (xkb_keycode_t code = xkb_keymap_min_keycode(m_map); code <= LastCode(); ++code) {
            const xkb_layout_index_t layout = xkb_state_key_get_layout(m_state, code);
            if (layout != XKB_LAYOUT_INVALID) {
                keys.push_back(KeyIn(code, layout));
            }
        }
        return keys;
    }

  private:
    struct Candidate {
        ModifierKey key;
        int rank;
    };

    void ReadKey(xkb_keycode_t code) {
        const xkb_layout_index_t layout = xkb_state_key_get_layout(m_state, code);
        if (layout == XKB_LAYOUT_INVALID) {
            if (!m_modifierOf.contains(code)) {
                m_result.spares.push_back(static_cast<Keycode>(code));
            }
            return;
        }
        NoteModifier(code, Keysym(code, layout, 0));
        m_result.keys.push_back(KeyIn(code, layout));
    }

    xkb_keycode_t LastCode() const {
        return std::min<xkb_keycode_t>(xkb_keymap_max_keycode(m_map), 255);
    }

    Key KeyIn(xkb_keycode_t code, xkb_layout_index_t layout) const {
        Key key;
        key.code = static_cast<Keycode>(code);
        // With no modifiers down, the "consumed" ones are all that the key's levels depend on.
        key.relevant = static_cast<ModifierMask>(
            xkb_state_key_get_consumed_mods2(m_state, code, XKB_CONSUMED_MODE_XKB) &
            kRealModifiers);
        const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(m_map, code, layout);
        for (xkb_level_index_t level = 0; level < levels; ++level) {
            ReadLevel(code, layout, level, key);
        }
        return key;
    }

    void ReadLevel(xkb_keycode_t code, xkb_layout_index_t layout, xkb_level_index_t level,
                   Key& key) const {
        const Symbol symbol = SymbolOfKeysym(Keysym(code, layout, level));
        if (level == 0) {
            key.levels.push_back({0, symbol});
        }
        std::array<xkb_mod_mask_t, 64> masks{};
        const std::size_t count = xkb_keymap_key_get_mods_for_level(m_map, code, layout, level,
                                                                    masks.data(), masks.size());
        for (std::size_t index = 0; index < count; ++index) {
            const auto mask = static_cast<ModifierMask>(masks.at(index) & kRealModifiers);
            if (mask != 0) {
                key.levels.push_back({mask, symbol});
            }
        }
    }

    // A key may give several symbols at once; treat such a level as unknown.
    xkb_keysym_t Keysym(xkb_keycode_t code, xkb_layout_index_t layout,
                        xkb_level_index_t level) const {
        const xkb_keysym_t* symbols = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(m_map, code, layout, level, &symbols);
        return count == 1 ? symbols[0] : xkb_keysym_t{XKB_KEY_NoSymbol};
    }

    void NoteModifier(xkb_keycode_t code, xkb_keysym_t base) {
        const auto found = m_modifierOf.find(code);
        if (found == m_modifierOf.end()) {
            return;
        }
        const ModifierMask bit = found->second;
        switch (base) {
            case XKB_KEY_Caps_Lock:
                m_result.capsLock = bit;
                return;
            case XKB_KEY_Num_Lock:
                m_result.numLock = bit;
                return;
            case XKB_KEY_Shift_L:
            case XKB_KEY_Shift_R:
                m_result.shift = bit;
                break;
            case XKB_KEY_Control_L:
            case XKB_KEY_Control_R:
                m_result.control = bit;
                break;
            case XKB_KEY_Alt_L:
            case XKB_KEY_Alt_R:
                m_result.alt = bit;
                break;
            default:
                break;
        }
        if (SymbolOfKeysym(base) == Symbol::kModifier) {
            m_candidates.push_back({{static_cast<Keycode>(code), bit}, Rank(code, base)});
        }
    }

    // Prefer left modifiers, since layouts use right ones for other things, then codes that have a
    // physical key.
    static int Rank(xkb_keycode_t code, xkb_keysym_t base) {
        constexpr xkb_keycode_t kLevelThreeOfTheMapOnly = 92;
        const bool first = base == XKB_KEY_Shift_L || base == XKB_KEY_Control_L ||
                           base == XKB_KEY_Alt_L || base == XKB_KEY_ISO_Level3_Shift ||
                           base == XKB_KEY_ISO_Level5_Shift;
        return (first ? 0 : 2) + (code == kLevelThreeOfTheMapOnly ? 1 : 0);
    }

    xkb_keymap* m_map;
    xkb_state* m_state;
    std::multimap<xkb_keycode_t, ModifierMask> m_modifierOf;
    std::vector<Candidate> m_candidates;
    Keymap m_result;
};

}  // namespace

std::optional<Keymap> ReadX11Keymap(const X11Connection& connection, xkb_context* context,
                                    std::int32_t device) {
    xcb_connection_t* x = connection.Get();
    const auto stateCookie = xcb_xkb_get_state(x, XCB_XKB_ID_USE_CORE_KBD);
    const auto modifierCookie = xcb_get_modifier_mapping(x);
    const auto downCookie = xcb_query_keymap(x);
    const std::unique_ptr<xkb_keymap, FreeXkb> map(
        xkb_x11_keymap_new_from_device(context, x, device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    const auto current = OwnReply(xcb_xkb_get_state_reply(x, stateCookie, nullptr));
    const auto modifiers = OwnReply(xcb_get_modifier_mapping_reply(x, modifierCookie, nullptr));
    const auto down = OwnReply(xcb_query_keymap_reply(x, downCookie, nullptr));
    if (!map || !current || !modifiers || !down) {
        return std::nullopt;
    }
    const std::unique_ptr<xkb_state, FreeXkb> state(xkb_state_new(map.get()));
    if (!state) {
        return std::nullopt;
    }
    xkb_state_update_mask(state.get(), 0, 0, 0, 0, 0, current->group);

    Keymap keymap = Reader(map.get(), state.get(), modifiers.get()).Read();
    keymap.group = current->group;
    // With a group latched or held by a key, locking another one would not put that in force.
    const xkb_layout_index_t groups = current->baseGroup == 0 && current->latchedGroup == 0
                                          ? xkb_keymap_num_layouts(map.get())
                                          : 0;
    for (xkb_layout_index_t group = 0; group < groups; ++group) {
        if (group != current->group) {
            xkb_state_update_mask(state.get(), 0, 0, 0, 0, 0, group);
            keymap.otherGroups.push_back(
                {static_cast<std::uint8_t>(group),
                 Reader(map.get(), state.get(), modifiers.get()).ReadGroup()});
        }
    }
    keymap.locked = current->lockedMods;
    keymap.latched = current->latchedMods;
    for (unsigned code = 0; code < 256; ++code) {
        if ((down->keys[code / 8] & (1U << (code % 8))) != 0) {
            keymap.down.push_back(static_cast<Keycode>(code));
        }
    }
    return keymap;
}

}  // namespace spellwick
