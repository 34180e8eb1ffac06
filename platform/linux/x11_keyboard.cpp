#include "platform/linux/x11_keyboard.h"

#include <array>
#include <thread>

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

#include "platform/linux/x11_keymap.h"
#include "platform/linux/x11_symbols.h"
#include "platform/linux/xcb_xkb.h"

namespace spellwick {

std::unique_ptr<X11Keyboard> X11Keyboard::Open(const std::string& display, std::string& error) {
    std::unique_ptr<X11Keyboard> keyboard(new X11Keyboard(display));
    xcb_connection_t* x = keyboard->m_connection.Get();
    if (!keyboard->m_connection.Works()) {
        error = "There is no X display to type into.";
        return nullptr;
    }
    if (xkb_x11_setup_xkb_extension(x, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr,
                                    nullptr) == 0) {
        error = "The X server lacks the keyboard extension.";
        return nullptr;
    }
    const xcb_query_extension_reply_t* xtest = xcb_get_extension_data(x, &xcb_test_id);
    if (xtest == nullptr || xtest->present == 0) {
        error = "The X server lacks the test extension, without which no keys can be typed.";
        return nullptr;
    }
    keyboard->m_context.reset(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    if (!keyboard->m_context) {
        error = "The keyboard's layout cannot be read.";
        return nullptr;
    }
    return keyboard;
}

std::optional<Keymap> X11Keyboard::ReadKeymap() {
    // The core keyboard has the keymap of the device used last. Make that the test device, by
    // releasing a key that is up, which no program sees.
    Release(xcb_get_setup(m_connection.Get())->min_keycode);
    const std::int32_t device = xkb_x11_get_core_keyboard_device_id(m_connection.Get());
    if (device < 0) {
        return std::nullopt;
    }
    return ReadX11Keymap(m_connection, m_context.get(), device);
}

bool X11Keyboard::Bind(std::span<const SpareBinding> bindings) {
    for (const SpareBinding& binding : bindings) {
        const xkb_keysym_t keysym = KeysymOfSymbol(binding.symbol);
        const std::array<xcb_keysym_t, 2> withAndWithoutShift{keysym, keysym};
        xcb_change_keyboard_mapping(m_connection.Get(), 1, static_cast<xcb_keycode_t>(binding.code),
                                    withAndWithoutShift.size(), withAndWithoutShift.data());
    }
    return m_connection.RoundTrip();
}

bool X11Keyboard::Unbind(std::span<const SpareBinding> bindings) {
    for (const SpareBinding& binding : bindings) {
        const auto code = static_cast<xcb_keycode_t>(binding.code);
        const auto map = OwnReply(xcb_get_keyboard_mapping_reply(
            m_connection.Get(), xcb_get_keyboard_mapping(m_connection.Get(), code, 1), nullptr));
        if (map && map->keysyms_per_keycode > 0 &&
            *xcb_get_keyboard_mapping_keysyms(map.get()) == KeysymOfSymbol(binding.symbol)) {
            const xcb_keysym_t nothing = XCB_NO_SYMBOL;
            xcb_change_keyboard_mapping(m_connection.Get(), 1, code, 1, &nothing);
        }
    }
    return m_connection.RoundTrip();
}

bool X11Keyboard::Press(Keycode code) {
    return Fake(XCB_KEY_PRESS, code);
}

bool X11Keyboard::Release(Keycode code) {
    return Fake(XCB_KEY_RELEASE, code);
}

bool X11Keyboard::Fake(std::uint8_t type, Keycode code) {
    xcb_test_fake_input(m_connection.Get(), type, static_cast<std::uint8_t>(code), XCB_CURRENT_TIME,
                        XCB_NONE, 0, 0, 0);
    xcb_flush(m_connection.Get());
    m_connection.DropEvents();
    return m_connection.Works();
}

bool X11Keyboard::SetLocks(ModifierMask affected, ModifierMask locked) {
    xcb_xkb_latch_lock_state(m_connection.Get(), XCB_XKB_ID_USE_CORE_KBD, affected, locked, 0, 0,
                             affected, 0, 0);
    xcb_flush(m_connection.Get());
    return m_connection.Works();
}

bool X11Keyboard::SetGroup(std::uint8_t group) {
    xcb_xkb_latch_lock_state(m_connection.Get(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
    xcb_flush(m_connection.Get());
    return m_connection.Works();
}

std::optional<ModifierMask> X11Keyboard::HeldModifiers() {
    const auto state = OwnReply(xcb_xkb_get_state_reply(
        m_connection.Get(), xcb_xkb_get_state(m_connection.Get(), XCB_XKB_ID_USE_CORE_KBD),
        nullptr));
    return state ? std::optional<ModifierMask>(state->baseMods) : std::nullopt;
}

bool X11Keyboard::Sync() {
    return m_connection.RoundTrip();
}

void X11Keyboard::Pause(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

std::chrono::steady_clock::time_point X11Keyboard::Now() const {
    return std::chrono::steady_clock::now();
}

}  // namespace spellwick
