// The whole-number widths of the shared state.
#pragma once

#include <cstdint>

namespace spellwick {

using i16 = std::int16_t;
using i32 = std::int32_t;

// Window handles have 32 significant bits on every system; 0 means no window.
using WindowHandle = std::uint32_t;

}  // namespace spellwick
