// A save that is killed in the middle leaves the state before it or the state after it.
#include <csignal>
#include <random>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "store/settings_io.h"
#include "tests/store/sqlite_test_tools.h"
#include "tests/store/store_test_tools.h"

namespace spellwick {
namespace {

constexpr const char* kPlayer = "Ultima Online - Mira Talon (Atlantic)";
constexpr int kKills = 200;

// What the child reports, in shared memory.
struct Progress {
    volatile int saves;
    volatile bool saving;
};

SharedState StateOf(unsigned seed) {
    SharedState state = StartedState();
    FillPlayer(state, seed);
    FillGlobals(state, seed);
    state.CurrentPlayerName = kPlayer;
    return state;
}

[[noreturn]] void SaveForever(const std::filesystem::path& folder, Progress& progress) {
    const OpenedStore opened = OpenSettingsStore(folder, std::chrono::system_clock::now());
    SharedState first = StateOf(1);
    SharedState second = StateOf(2);
    RecordingView view;
    SettingsIo saveFirst(first, *opened.store, view);
    SettingsIo saveSecond(second, *opened.store, view);
    while (true) {
        progress.saving = true;
        const bool ok = progress.saves % 2 == 0 ? saveFirst.SaveGlobalSettings({}).ok
                                                : saveSecond.SaveGlobalSettings({}).ok;
        progress.saving = false;
        if (!ok) {
            _exit(1);
        }
        progress.saves = progress.saves + 1;
    }
}

TEST(StoreKilledInASave, HoldsTheOldOrTheNewStateWhole_Long) {
    const TemporaryFolder folder;
    void* shared =
        mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(shared, MAP_FAILED);
    auto& progress = *new (shared) Progress{};
    const SharedState first = StateOf(1);
    const SharedState second = StateOf(2);
    std::mt19937 random(20261121);
    int firsts = 0;
    int seconds = 0;
    int inASave = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        progress = Progress{};
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            SaveForever(folder.Path(), progress);
        }
        // Both states have been saved before the kill, so either may be the old one.
        for (int wait = 0; progress.saves < 2 && wait < 5000; ++wait) {
            usleep(1000);
        }
        usleep(std::uniform_int_distribution<useconds_t>(0, 12000)(random));
        ::kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the child ended by itself after " << progress.saves;
        ASSERT_GE(progress.saves, 2);
        inASave += progress.saving ? 1 : 0;

        const auto store = OpenWell(folder.Path());
        SharedState found = StartedState();
        RecordingView view;
        SettingsIo(found, *store, view).LoadPlayerSettings(kPlayer);
        const bool isFirst = PlayerDifferences(found, first).empty();
        const bool isSecond = PlayerDifferences(found, second).empty();
        ASSERT_NE(isFirst, isSecond) << "kill " << kill;
        // The prices belong to the same save.
        const auto price = store->Read("Settings", "BM price");
        ASSERT_EQ(price, std::to_string((isFirst ? first : second).RegPrice(3))) << "kill " << kill;
        // A save that was reported as done must not be lost.
        if (!progress.saving) {
            ASSERT_EQ(isFirst, progress.saves % 2 == 1) << "kill " << kill;
        }
        firsts += isFirst ? 1 : 0;
        seconds += isSecond ? 1 : 0;
    }
    EXPECT_GT(firsts, kKills / 10);
    EXPECT_GT(seconds, kKills / 10);
    EXPECT_GT(inASave, kKills / 2);
    RecordProperty("kills in the middle of a save", inASave);
    munmap(shared, sizeof(Progress));
}

}  // namespace
}  // namespace spellwick
