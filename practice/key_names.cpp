#include "practice/key_names.h"

#include <QGuiApplication>
#include <array>
#include <memory>
#include <optional>
#include <string_view>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

namespace spellwick::practice {
namespace {

struct NamedKey {
    quint32 keysym;
    std::string_view name;
};

constexpr std::array kNamedKeys{
    NamedKey{XKB_KEY_Return, "Enter"},
    NamedKey{XKB_KEY_KP_Enter, "Enter"},
    NamedKey{XKB_KEY_BackSpace, "Backspace"},
    NamedKey{XKB_KEY_Tab, "Tab"},
    NamedKey{XKB_KEY_ISO_Left_Tab, "Tab"},
    NamedKey{XKB_KEY_Escape, "Esc"},
    NamedKey{XKB_KEY_space, "Space"},
    NamedKey{XKB_KEY_Delete, "Delete"},
    NamedKey{XKB_KEY_Insert, "Insert"},
    NamedKey{XKB_KEY_Home, "Home"},
    NamedKey{XKB_KEY_End, "End"},
    NamedKey{XKB_KEY_Prior, "Page Up"},
    NamedKey{XKB_KEY_Next, "Page Down"},
    NamedKey{XKB_KEY_Left, "Left"},
    NamedKey{XKB_KEY_Right, "Right"},
    NamedKey{XKB_KEY_Up, "Up"},
    NamedKey{XKB_KEY_Down, "Down"},
};

bool IsModifier(quint32 keysym) {
    return (keysym >= XKB_KEY_Shift_L && keysym <= XKB_KEY_Hyper_R) ||
           (keysym >= XKB_KEY_ISO_Lock && keysym <= XKB_KEY_ISO_Last_Group_Lock) ||
           keysym == XKB_KEY_Mode_switch || keysym == XKB_KEY_Num_Lock ||
           keysym == XKB_KEY_NoSymbol;
}

std::string Utf8OfSymbol(quint32 keysym) {
    std::array<char, 8> buffer{};
    const int size = xkb_keysym_to_utf8(keysym, buffer.data(), buffer.size());
    return size > 1 ? std::string(buffer.data()) : std::string();
}

template <auto Release>
struct Releaser {
    template <typename T>
    void operator()(T* object) const {
        Release(object);
    }
};
using KeymapOwner = std::unique_ptr<xkb_keymap, Releaser<xkb_keymap_unref>>;
using StateOwner = std::unique_ptr<xkb_state, Releaser<xkb_state_unref>>;
using ContextOwner = std::unique_ptr<xkb_context, Releaser<xkb_context_unref>>;

struct CapSymbols {
    quint32 plain = XKB_KEY_NoSymbol;
    quint32 shifted = XKB_KEY_NoSymbol;
};

// Read the keymap for every key: the layout may change while the game runs.
std::optional<CapSymbols> SymbolsOfKeyCode(quint32 keyCode) {
    const auto* display = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (display == nullptr || keyCode == 0) {
        return std::nullopt;
    }
    xcb_connection_t* connection = display->connection();
    const ContextOwner context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const int device = xkb_x11_get_core_keyboard_device_id(connection);
    const KeymapOwner keymap(xkb_x11_keymap_new_from_device(context.get(), connection, device,
                                                            XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap) {
        return std::nullopt;
    }
    const StateOwner state(xkb_x11_state_new_from_device(keymap.get(), connection, device));
    if (!state) {
        return std::nullopt;
    }
    const xkb_layout_index_t layout = xkb_state_key_get_layout(state.get(), keyCode);
    const auto symbolAt = [&](xkb_level_index_t level) -> quint32 {
        const xkb_keysym_t* symbols = nullptr;
        const int count =
            xkb_keymap_key_get_syms_by_level(keymap.get(), keyCode, layout, level, &symbols);
        return count > 0 ? symbols[0] : XKB_KEY_NoSymbol;
    };
    return CapSymbols{symbolAt(0), symbolAt(1)};
}

}  // namespace

std::string CapName(quint32 plain, quint32 shifted) {
    if (IsModifier(plain)) {
        return {};
    }
    for (const NamedKey& named : kNamedKeys) {
        if (named.keysym == plain) {
            return std::string(named.name);
        }
    }
    if (plain >= XKB_KEY_F1 && plain <= XKB_KEY_F35) {
        return "F" + std::to_string(plain - XKB_KEY_F1 + 1);
    }
    const bool digitOnShift = shifted >= XKB_KEY_0 && shifted <= XKB_KEY_9;
    const quint32 symbol = digitOnShift ? shifted : plain;
    const std::string text = Utf8OfSymbol(symbol);
    if (text.empty()) {
        std::array<char, 64> name{};
        xkb_keysym_get_name(symbol, name.data(), name.size());
        return name.data();
    }
    return QString::fromStdString(text).toUpper().toStdString();
}

KeyPress PressOf(const QKeyEvent& event) {
    const quint32 typed = event.nativeVirtualKey();
    const CapSymbols symbols =
        SymbolsOfKeyCode(event.nativeScanCode()).value_or(CapSymbols{typed, XKB_KEY_NoSymbol});
    KeyPress press;
    press.modifiers.ctrl = event.modifiers().testFlag(Qt::ControlModifier);
    press.modifiers.alt = event.modifiers().testFlag(Qt::AltModifier);
    press.modifiers.shift = event.modifiers().testFlag(Qt::ShiftModifier);
    press.key = CapName(symbols.plain, symbols.shifted);
    const QString text = event.text();
    if (!text.isEmpty() && text.front().isPrint()) {
        press.text = text.toStdString();
    }
    return press;
}

}  // namespace spellwick::practice
