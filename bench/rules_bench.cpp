// The cost of a start and of a refresh of the page: the spell table, the chances, the eight
// amounts.
#include <fstream>
#include <sstream>

#include <benchmark/benchmark.h>

#include "model/castable_amount.h"
#include "model/chances.h"
#include "model/spell_data.h"
#include "model/spell_lookup.h"

namespace spellwick {
namespace {

std::string ShippedText() {
    std::ifstream file(SPELLWICK_SPELL_DATA, std::ios::binary);
    std::stringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

SharedState LoadedState() {
    SharedState state;
    if (!LoadSpellData(state, std::filesystem::path(SPELLWICK_SPELL_DATA))) {
        throw RuntimeFailure(FailureKind::kFile, "The spell table could not be read.");
    }
    state.Magery = state.Necro = state.Chivalry = 85;
    state.Intelligence = 100;
    state.CurrentTithing = 1000;
    state.RegYellow = 3;
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        state.RegPrice(reagent) = FactsOfReagent(reagent).defaultPrice;
    }
    return state;
}

// The baseline: reads each byte of the spell table once.
void CountTheCommas(benchmark::State& run) {
    const std::string text = ShippedText();
    for (auto _ : run) {
        std::istringstream input(text);
        int commas = 0;
        for (int c = input.get(); c != EOF; c = input.get()) {
            commas += c == ',' ? 1 : 0;
        }
        benchmark::DoNotOptimize(commas);
    }
    run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(CountTheCommas);

void ReadTheSpellTable(benchmark::State& run) {
    const std::string text = ShippedText();
    for (auto _ : run) {
        std::istringstream input(text);
        SharedState state;
        if (!LoadSpellData(state, input)) {
            run.SkipWithError("the spell table does not load");
        }
        benchmark::DoNotOptimize(state.SpellCount);
    }
    run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(ReadTheSpellTable);

void ReadTheSpellFile(benchmark::State& run) {
    for (auto _ : run) {
        SharedState state;
        if (!LoadSpellData(state, std::filesystem::path(SPELLWICK_SPELL_DATA))) {
            run.SkipWithError("the spell table does not load");
        }
        benchmark::DoNotOptimize(state.SpellCount);
    }
}
BENCHMARK(ReadTheSpellFile);

void CalculateAllChances(benchmark::State& run) {
    SharedState state = LoadedState();
    for (auto _ : run) {
        CalculateChances(state);
        benchmark::DoNotOptimize(state.Chance(95));
    }
}
BENCHMARK(CalculateAllChances);

void RecalculateAllCosts(benchmark::State& run) {
    SharedState state = LoadedState();
    for (auto _ : run) {
        RecalculateCosts(state);
        benchmark::DoNotOptimize(state.Spells(95).Cost);
    }
}
BENCHMARK(RecalculateAllCosts);

// The argument is the pressed page button.
void EightAmounts(benchmark::State& run) {
    const SharedState state = LoadedState();
    const auto button = static_cast<i32>(run.range(0));
    CounterTexts counters;
    counters.Fill("125");
    for (auto _ : run) {
        for (i32 slot = 0; slot < kSlotCount; ++slot) {
            const i16 amount = CastableAmount(state, button, slot, counters);
            benchmark::DoNotOptimize(AmountColour(amount, state.RegYellow, kYellow));
        }
    }
}
BENCHMARK(EightAmounts)->Arg(2)->Arg(8)->Arg(kPaladinButton);

}  // namespace
}  // namespace spellwick

BENCHMARK_MAIN();
