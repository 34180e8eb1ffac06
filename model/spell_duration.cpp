#include "model/spell_duration.h"

#include <algorithm>
#include <array>

#include "text/number_forms.h"

namespace spellwick {

namespace {

enum class Basis { kNothing, kMagery, kMageryAndIntelligence, kSpirit, kSpiritOverResist, kRounds };

constexpr i32 kNoLimit = 1'000'000;

// Seconds = base + basis * numerator / denominator, within the limits.
struct DurationRule {
    i16 number;
    i32 base;
    Basis basis;
    i32 numerator;
    i32 denominator;
    i32 least;
    i32 most;
};

constexpr std::array<DurationRule, 24> kRules{{
    {1, 0, Basis::kMagery, 6, 5, 0, kNoLimit},
    {2, 0, Basis::kMagery, 6, 5, 0, 144},
    {3, 0, Basis::kMagery, 2, 1, 15, 240},
    {4, 0, Basis::kMagery, 1, 1, 0, 120},
    {5, 0, Basis::kMageryAndIntelligence, 2, 1, 0, kNoLimit},
    {6, 4, Basis::kMagery, 1, 2, 0, kNoLimit},
    {7, 7, Basis::kMagery, 1, 5, 0, kNoLimit},
    {8, 3, Basis::kMagery, 2, 5, 0, kNoLimit},
    {9, 3, Basis::kMagery, 1, 3, 0, kNoLimit},
    {10, 2, Basis::kMagery, 7, 25, 0, kNoLimit},
    {11, 10, Basis::kNothing, 0, 1, 0, kNoLimit},
    {12, 30, Basis::kNothing, 0, 1, 0, kNoLimit},
    {13, 90, Basis::kNothing, 0, 1, 0, kNoLimit},
    {14, 120, Basis::kNothing, 0, 1, 0, kNoLimit},
    {15, 900, Basis::kNothing, 0, 1, 0, kNoLimit},
    {16, 1, Basis::kSpirit, 5, 17, 0, kNoLimit},
    {17, 40, Basis::kSpiritOverResist, 2, 5, 0, kNoLimit},
    {18, 8, Basis::kSpiritOverResist, 1, 8, 0, kNoLimit},
    {19, 20, Basis::kSpiritOverResist, 1, 5, 0, kNoLimit},
    {20, 0, Basis::kRounds, 2, 1, 0, kNoLimit},
    {21, 10, Basis::kSpirit, 2, 3, 0, kNoLimit},
    {22, 11, Basis::kNothing, 0, 1, 0, kNoLimit},
    {23, 20, Basis::kNothing, 0, 1, 0, kNoLimit},
    {24, 200, Basis::kNothing, 0, 1, 0, kNoLimit},
}};

i32 ValueOf(Basis basis, const CasterValues& values) {
    constexpr i32 kFewestRounds = 4;
    switch (basis) {
        case Basis::kMagery:
            return values.magery;
        case Basis::kMageryAndIntelligence:
            return values.magery + values.intelligence;
        case Basis::kSpirit:
            return values.spiritSpeak;
        case Basis::kSpiritOverResist:
            return values.spiritSpeak - values.targetResist;
        case Basis::kRounds:
            return std::max(kFewestRounds, TruncatingDivide(values.spiritSpeak, 10));
        case Basis::kNothing:
            break;
    }
    return 0;
}

}  // namespace

i16 SpellDuration(i16 rule, const CasterValues& values) {
    const auto* found = std::find_if(kRules.begin(), kRules.end(), [rule](const DurationRule& row) {
        return row.number == rule;
    });
    if (found == kRules.end()) {
        return 0;
    }
    // Divide once, at the end, so that no fraction is lost before rounding down.
    const i32 seconds = TruncatingDivide(
        found->base * found->denominator + ValueOf(found->basis, values) * found->numerator,
        found->denominator);
    return ToI16(std::clamp(seconds, found->least, found->most));
}

}  // namespace spellwick
