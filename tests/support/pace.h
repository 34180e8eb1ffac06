// What tests measure time with.
#pragma once

#include <ctime>

namespace spellwick::testing_support {

// The factor by which a test that measures time may be slower.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)  // clang says it so, g++ by the other name
#define SPELLWICK_SANITIZED
#endif
#endif
#if defined(SPELLWICK_SANITIZED) || defined(__SANITIZE_ADDRESS__)
inline constexpr int kPace = 10;  // every access to memory is checked, and little is optimised
#else
inline constexpr int kPace = 1;
#endif

// The processor time that this process has used since it was made: unlike the clock on the wall it
// does not count what other programs on the machine do. (On Windows it is the clock on the wall.)
class ProcessorTime {
  public:
    double Seconds() const {
        return static_cast<double>(std::clock() - m_start) / static_cast<double>(CLOCKS_PER_SEC);
    }

  private:
    std::clock_t m_start = std::clock();
};

}  // namespace spellwick::testing_support
