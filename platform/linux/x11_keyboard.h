// The keyboard of an X server: keys go through the XTEST extension to the window in front.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <xkbcommon/xkbcommon.h>

#include "platform/keyboard.h"
#include "platform/linux/x11_connection.h"

namespace spellwick {

class X11Keyboard : public Keyboard {
  public:
    // An empty display means the one in the environment. Null on failure; `error` is then a
    // sentence for the user.
    static std::unique_ptr<X11Keyboard> Open(const std::string& display, std::string& error);

    std::optional<Keymap> ReadKeymap() override;
    bool Bind(std::span<const SpareBinding> bindings) override;
    bool Unbind(std::span<const SpareBinding> bindings) override;
    bool Press(Keycode code) override;
    bool Release(Keycode code) override;
    bool SetLocks(ModifierMask affected, ModifierMask locked) override;
    bool SetGroup(std::uint8_t group) override;
    std::optional<ModifierMask> HeldModifiers() override;
    bool Sync() override;
    void Pause(std::chrono::milliseconds time) override;
    std::chrono::steady_clock::time_point Now() const override;

  private:
    struct FreeContext {
        void operator()(xkb_context* context) const { xkb_context_unref(context); }
    };

    explicit X11Keyboard(const std::string& display) : m_connection(display) {}
    bool Fake(std::uint8_t type, Keycode code);

    X11Connection m_connection;
    std::unique_ptr<xkb_context, FreeContext> m_context;
};

}  // namespace spellwick
