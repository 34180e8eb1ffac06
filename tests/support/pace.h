// The factor by which a test that measures time may be slower.
#pragma once

namespace spellwick::testing_support {

#ifdef __SANITIZE_ADDRESS__
inline constexpr int kPace = 5;  // every access to memory is checked
#else
inline constexpr int kPace = 1;
#endif

}  // namespace spellwick::testing_support
