// A sum over a text (FNV-1a, 64 bits): it tells faults of disks and names from each other, and
// guards against nobody.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace spellwick {

// Sixteen digits, 0 to f.
template <typename Unit>
std::basic_string<Unit> FnvDigits(std::basic_string_view<Unit> text) {
    constexpr std::uint64_t kPrime = 0x100000001b3;
    std::uint64_t sum = 0xcbf29ce484222325;
    for (const Unit unit : text) {
        sum = (sum ^ static_cast<std::make_unsigned_t<Unit>>(unit)) * kPrime;
    }
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::basic_string<Unit> digits(16, Unit{'0'});
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, sum /= 16) {
        *digit = static_cast<Unit>(kDigits[sum % 16]);
    }
    return digits;
}

}  // namespace spellwick
