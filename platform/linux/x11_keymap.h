// Reads the X server's current keymap into a value.
#pragma once

#include <cstdint>
#include <optional>

#include <xkbcommon/xkbcommon.h>

#include "platform/keymap.h"
#include "platform/linux/x11_connection.h"

namespace spellwick {

// `device` is the number of the core keyboard. None if the server does not answer.
std::optional<Keymap> ReadX11Keymap(const X11Connection& connection, xkb_context* context,
                                    std::int32_t device);

}  // namespace spellwick
