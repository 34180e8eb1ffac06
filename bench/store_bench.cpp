// What the store costs: a save and a load of a player, the switch between players in stores of
// several sizes, and the opening.
#include <cstdlib>
#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>

#include "platform/linux/open_settings_store.h"
#include "platform/linux/sqlite_handles.h"
#include "store/section_name.h"
#include "store/settings_io.h"

namespace spellwick {
namespace {

std::string ProfileName(int number) {
    std::string digits = std::to_string(number);
    digits.insert(0, 5 - digits.size(), '0');
    return "Ultima Online - Mira Talon " + digits + " (Atlantic)";
}

// A store with that many whole profiles, gone with the object.
class Fixture {
  public:
    explicit Fixture(int profiles) {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "spellwick-bench-XXXXXX").string();
        m_folder = mkdtemp(pattern.data());
        state.Spells.GrowTo(104);
        Vary(0);
        Open();
        // A store that takes nothing fails the benches that write to it.
        (void)io->SavePlayerSettings(ProfileName(0));
        (void)io->SaveGlobalSettings({});
        sqlite3* raw = nullptr;
        sqlite3_open((m_folder / "settings.db").c_str(), &raw);
        const SqliteDatabase owner(raw);
        const std::string copy =
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
            std::to_string(profiles - 1) +
            ") INSERT INTO setting SELECT application, printf('Ultima Online - Mira Talon %05d "
            "(Atlantic)', i), key, value FROM n, setting WHERE section = '" +
            ProfileName(0) + "' AND i < " + std::to_string(profiles);
        Execute(raw, copy.c_str());
        Execute(raw, "PRAGMA wal_checkpoint(TRUNCATE)");
    }
    ~Fixture() {
        io.reset();
        m_opened = {};
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    Fixture(const Fixture&) = delete;
    Fixture& operator=(const Fixture&) = delete;
    Fixture(Fixture&&) = delete;
    Fixture& operator=(Fixture&&) = delete;

    void Open() {
        io.reset();
        m_opened = OpenSettingsStore(m_folder, std::chrono::system_clock::now());
        io = std::make_unique<SettingsIo>(state, *m_opened.store, [](PlayerPart) {});
    }
    const SettingsStore& Store() const { return *m_opened.store; }

    // Other values in every variable of the player.
    void Vary(int round) {
        for (i32 bag = 0; bag < kBagCount; ++bag) {
            state.BagName(bag) = "Bag " + std::to_string(round);
            for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
                state.ReagentStock(reagent, bag) = static_cast<i16>(round % 1000 + reagent);
            }
        }
        state.CurrentTithing = round;
        for (i32 row = 0; row <= kLastPagedRow; ++row) {
            state.Spells(row).SpellText = "Rel Por " + std::to_string(round);
            state.Spellbook(row) = static_cast<i16>(round % 2);
        }
        state.Magery = static_cast<i16>(round % 101);
    }
    // What a few casts change.
    void VaryAFew(int round) {
        for (i32 reagent = 1; reagent <= 5; ++reagent) {
            state.ReagentStock(reagent, 0) = static_cast<i16>(round % 1000 + reagent);
        }
    }

    SharedState state;
    std::unique_ptr<SettingsIo> io;

  private:
    std::filesystem::path m_folder;
    OpenedStore m_opened;
};

void Check(benchmark::State& bench, const StoreResult& result) {
    if (!result.ok) {
        bench.SkipWithError(result.trouble.c_str());
    }
}

void SavePlayerEverythingChanged(benchmark::State& bench) {
    Fixture fixture(10);
    int round = 0;
    for (auto _ : bench) {
        bench.PauseTiming();
        fixture.Vary(++round);
        bench.ResumeTiming();
        Check(bench, fixture.io->SavePlayerSettings(ProfileName(5)));
    }
}
BENCHMARK(SavePlayerEverythingChanged)->Unit(benchmark::kMillisecond);

void SavePlayerAFewCasts(benchmark::State& bench) {
    Fixture fixture(10);
    int round = 0;
    for (auto _ : bench) {
        fixture.VaryAFew(++round);
        Check(bench, fixture.io->SavePlayerSettings(ProfileName(5)));
    }
}
BENCHMARK(SavePlayerAFewCasts)->Unit(benchmark::kMillisecond);

void SavePlayerNothingChanged(benchmark::State& bench) {
    Fixture fixture(10);
    Check(bench, fixture.io->SavePlayerSettings(ProfileName(5)));
    for (auto _ : bench) {
        Check(bench, fixture.io->SavePlayerSettings(ProfileName(5)));
    }
}
BENCHMARK(SavePlayerNothingChanged)->Unit(benchmark::kMillisecond);

void LoadPlayer(benchmark::State& bench) {
    Fixture fixture(static_cast<int>(bench.range(0)));
    int round = 0;
    for (auto _ : bench) {
        fixture.io->LoadPlayerSettings(ProfileName(++round % static_cast<int>(bench.range(0))));
    }
}
BENCHMARK(LoadPlayer)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void LoadGlobal(benchmark::State& bench) {
    Fixture fixture(10);
    for (auto _ : bench) {
        fixture.io->LoadGlobalSettings();
    }
}
BENCHMARK(LoadGlobal)->Unit(benchmark::kMillisecond);

// Save one player after a few casts, load the next.
void PlayerSwitch(benchmark::State& bench) {
    const auto profiles = static_cast<int>(bench.range(0));
    Fixture fixture(profiles);
    int round = 0;
    for (auto _ : bench) {
        // Strides through the store, so that no two switches in a row are neighbours.
        const int from = static_cast<int>(round * 7919LL % profiles);
        fixture.VaryAFew(++round);
        const int to = static_cast<int>(round * 7919LL % profiles);
        Check(bench, fixture.io->SavePlayerSettings(ProfileName(from)));
        fixture.io->LoadPlayerSettings(ProfileName(to));
    }
}
BENCHMARK(PlayerSwitch)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void ListPlayers(benchmark::State& bench) {
    Fixture fixture(static_cast<int>(bench.range(0)));
    for (auto _ : bench) {
        benchmark::DoNotOptimize(PlayerNames(fixture.Store()));
    }
}
BENCHMARK(ListPlayers)->Arg(10)->Arg(10000)->Unit(benchmark::kMillisecond);

void OpenStore(benchmark::State& bench) {
    Fixture fixture(static_cast<int>(bench.range(0)));
    for (auto _ : bench) {
        fixture.Open();
        fixture.io->LoadGlobalSettings();
    }
}
BENCHMARK(OpenStore)->Arg(1)->Arg(10)->Arg(200)->Arg(1000)->Arg(10000)->Unit(
    benchmark::kMillisecond);

}  // namespace
}  // namespace spellwick

BENCHMARK_MAIN();
