#include "companion/settings_at_start.h"

#include "model/failure_guard.h"
#include "model/skill_entries.h"
#include "model/spell_lookup.h"
#include "store/catalogue.h"
#include "store/macro_code.h"
#include "store/section_name.h"
#include "store/text_forms.h"
#include "store/twips.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

// The spells tab shows the prices of Magery's reagents first, and an edit reads what it shows.
void TakeInPrices(SharedState& state) {
    RecalculateCosts(state);
    for (i32 reagent = 1; reagent < kFirstNecroReagent; ++reagent) {
        i16& price = state.RegPrice(reagent);
        price = ToI16(FirstFour(StandardText(i32{price})));
    }
}

void TakeInMacros(SharedState& state, const SettingsStore& store) {
    const SectionValues saved = store.ReadSection(kGlobalSection);
    for (i32 number = 1; number <= kLastMacro; ++number) {
        const auto code = saved.find(MacroCodeKey(number));
        SetMacro(state, number,
                 MacroOfDialog(number, code != saved.end() ? code->second : kUnsavedMacro));
    }
}

void TakeInLimits(SharedState& state) {
    for (i16* limit : {&state.MeditateLevel, &state.RegYellow}) {
        *limit = ToI16(FirstFour(PlainText(i32{*limit})));
    }
}

float ReadPlace(const SettingsStore& store, std::string_view key) {
    float place = 0.0F;
    IgnoreFailure([&] {
        if (const auto text = store.Read(kGlobalSection, key)) {
            const float saved = ReadFloat(*text);
            static_cast<void>(PixelsOf(saved));  // fails beyond the numbers of a window
            place = saved;
        }
    });
    return place;
}

}  // namespace

SettingsAtStart TakeInSettings(SharedState& state, const SettingsStore& store) {
    SettingsAtStart start;
    start.place = {.top = ReadPlace(store, kSettingsTopKey),
                   .left = ReadPlace(store, kSettingsLeftKey)};
    IgnoreFailure([&] { TakeInPrices(state); });
    IgnoreFailure([&] { TakeInMacros(state, store); });
    IgnoreFailure([&] { start.players = PlayerNames(store); });
    IgnoreFailure([&] { TakeInLimits(state); });
    IgnoreFailure([&] { LevelCircles(state); });
    // The costs once more, of the prices that are left.
    IgnoreFailure([&] { TakeInPrices(state); });
    return start;
}

}  // namespace spellwick
