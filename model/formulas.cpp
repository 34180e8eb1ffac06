#include "model/formulas.h"

#include <array>
#include <cmath>

#include "text/number_forms.h"

namespace spellwick {

namespace {

// The values that the figures are calculated from.
struct Source {
    CasterValues caster;
    double mageryTier = 0.0;
    double damageFactor = 0.0;
    double spiritSpeak = 0.0;
    double spiritOverResist = 0.0;  // Spirit Speak minus the target's resistance
    i32 circle = 0;
};

std::string TierTimes(const Source& from, double points) {
    return StandardText(from.mageryTier * points);
}

std::string Damage(const Source& from, double points) {
    return StandardText(std::floor(from.damageFactor * points));
}

std::string Strangle(const Source& from) {
    return "Base damage=" + StandardText(from.spiritSpeak / 10.0 - 2.0) + " to " +
           StandardText(from.spiritSpeak / 10.0 + 1.0);
}

// ODDITY(spirit-speak-limit): with a saved Spirit Speak above 409 or below -409, or an entry below
// -409, showing any spell ends the run; kept because the figures of all spells are calculated
// together, and this product has 16 bits.
std::string VengefulSpirit(const Source& from) {
    return StandardText(ToI16(i32{from.caster.spiritSpeak} * 80) / 1200.0 + 10.0);
}

std::string ResistChance(const Source& from) {
    const double resist = from.caster.targetResist;
    const i16 byCircle =
        ToI16(RoundHalfEven(resist - ((from.caster.magery - 20) / 5.0 + from.circle * 5)));
    const double byResist = resist / 5.0;
    return (byResist <= byCircle ? StandardText(i32{byCircle}) : StandardText(byResist)) +
           "% chance";
}

std::string Rounds(const Source& from) {
    constexpr i16 kFewest = 40;
    return from.caster.spiritSpeak > kFewest
               ? StandardText(TruncatingDivide(from.caster.spiritSpeak, 10)) + " rounds"
               : "4 rounds";
}

struct Formula {
    i32 number;
    std::string (*text)(const Source& from);
};

using S = const Source&;

// clang-format off
constexpr std::array<Formula, kFormulaCount> kFormulas{{
    {1, [](S from) { return TierTimes(from, 6.0); }},
    {2, [](S from) { return Damage(from, 4.0); }},
    {3, [](S from) { return Damage(from, 6.0); }},
    {4, [](S from) { return TierTimes(from, 6.0); }},
    {5, [](S from) { return Damage(from, 5.0); }},
    {6, [](S from) { return Damage(from, 12.0); }},
    {7, [](S from) { return TierTimes(from, 12.0); }},
    {8, [](S from) { return Damage(from, 8.0); }},
    {9, [](S from) { return Damage(from, 20.0); }},
    {10, [](S from) { return TierTimes(from, 29.0); }},
    {11, [](S from) { return Damage(from, 8.0); }},
    {12, [](S from) { return Damage(from, 29.0); }},
    {13, [](S from) { return TierTimes(from, 46.0); }},
    {14, [](S from) { return Damage(from, 14.0); }},
    {15, [](S from) { return Damage(from, 56.0); }},
    {16, [](S from) { return Damage(from, 17.0); }},
    {17, [](S from) { return Damage(from, 66.0); }},
    {18, [](S from) { return StandardText(i32{from.caster.magery}); }},
    {19, [](S from) { return StandardText(i32{from.caster.intelligence}); }},
    {20, [](S from) { return StandardText(TruncatingDivide(from.caster.magery, 10)); }},
    {21, [](S from) { return StandardText(TruncatingDivide(from.caster.intelligence, 2)); }},
    {22, [](S from) { return StandardText(TruncatingDivide(from.caster.magery, 7)); }},
    {23, [](S from) { return StandardText((from.caster.magery + from.caster.intelligence) * 2); }},
    {24, [](S from) { return StandardText(i32{from.caster.magery}); }},
    {25, [](S from) { return StandardText(from.spiritSpeak / 75.0 + 1.0); }},
    {26, [](S from) { return StandardText(from.spiritOverResist / 25.0 + 40.0); }},
    {27, [](S from) { return StandardText(from.spiritOverResist / 80.0 + 8.0); }},
    {28, [](S from) { return StandardText(from.spiritOverResist / 50.0 + 20.0); }},
    {29, Strangle},
    {30, VengefulSpirit},
    {31, ResistChance},
    {32, [](S from) { return StandardText(from.spiritOverResist / 100.0 + 30.0); }},
    {33, Rounds},
}};
// clang-format on

}  // namespace

double MageryTier(i16 magery) {
    return RoundHalfEven((magery + 50) / 100.0);
}

float DamageFactor(i16 evalInt, i16 targetResist) {
    // ODDITY(damage-short): with a round factor such as 0.9 or 0.98, a damage that should be whole
    // can be one point less; kept because the factor is in single precision.
    const double divisor = targetResist > evalInt ? 200.0 : 500.0;
    return static_cast<float>(1.0 + (evalInt - targetResist) / divisor);
}

FormulaTexts BuildFormulaTexts(const CasterValues& values, i32 circle) {
    const Source from{
        .caster = values,
        .mageryTier = MageryTier(values.magery),
        .damageFactor = DamageFactor(values.evalInt, values.targetResist),
        .spiritSpeak = static_cast<double>(values.spiritSpeak),
        .spiritOverResist = static_cast<double>(values.spiritSpeak - values.targetResist),
        .circle = circle};
    FormulaTexts texts;
    for (const Formula& formula : kFormulas) {
        texts(formula.number) = formula.text(from);
    }
    return texts;
}

}  // namespace spellwick
