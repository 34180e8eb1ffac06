// Saved values that cannot be read: what a load makes of them, and where it ends.
#include <gmock/gmock.h>

#include "tests/store/settings_io_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

TEST_F(SettingsIoTest, StockAndTithing_TolerateBlanksAndWords) {
    store.Put("Mira", "MR 0", " 12");
    store.Put("Mira", "SA 0", "none");
    store.Put("Mira", "BM 0", "");
    store.Put("Mira", "SS 0", "-3");
    store.Put("Mira", "CurrentTithing", "many");
    io.LoadPlayerSettings("Mira");
    EXPECT_EQ(state.ReagentStock(1, 0), 12);
    EXPECT_EQ(state.ReagentStock(2, 0), 0);
    EXPECT_EQ(state.ReagentStock(3, 0), 0);
    EXPECT_EQ(state.ReagentStock(4, 0), -3);
    EXPECT_EQ(state.CurrentTithing, 0);
}

TEST_F(SettingsIoTest, StockOverItsRange_FailsAndKeepsWhatWasBefore) {
    store.Put("Mira", "Bag 0", "Satchel");
    store.Put("Mira", "MR 0", "5");
    store.Put("Mira", "BM 0", "32768");
    store.Put("Mira", "CurrentTithing", "7");
    state.ReagentStock(3, 0) = 77;
    EXPECT_EQ(FailureOfPlayerLoad(), FailureKind::kOverflow);
    EXPECT_EQ(state.BagName(0), "Satchel");
    EXPECT_EQ(state.ReagentStock(1, 0), 5);
    EXPECT_EQ(state.ReagentStock(3, 0), 77);
    EXPECT_EQ(state.CurrentTithing, 0);
    EXPECT_THAT(view.calls, ElementsAre("bag names"));
}

TEST_F(SettingsIoTest, TithingOverItsRange_Fails) {
    store.Put("Mira", "CurrentTithing", "2147483648");
    EXPECT_EQ(FailureOfPlayerLoad(), FailureKind::kOverflow);
}

TEST_F(SettingsIoTest, PlayerTextThatIsNoNumber_FailsAtItsPlace) {
    for (const char* key : {"CurrentReagentBag", "LeftReagentBag", "RightReagentBag", "User1",
                            "User16", "Spellbook 0", "Spellbook 96", "EvalInt", "Dexterity",
                            "TargetInt", "SendSpellText", "SendSpellSuffix"}) {
        store = MemorySettingsStore();
        store.Put("Mira", "MR 0", "5");
        store.Put("Mira", key, "x");
        store.Put("Mira", "SpellText 0 0", "last");
        state = StartedState();
        EXPECT_EQ(FailureOfPlayerLoad(), FailureKind::kTypeMismatch) << key;
        EXPECT_EQ(state.ReagentStock(1, 0), 5) << key;
        EXPECT_EQ(state.Spells(0).SpellText, "") << key;
    }
}

TEST_F(SettingsIoTest, GlobalTextThatIsNoNumber_FailsAtItsPlace) {
    for (const char* key : {"MR price", "PI price", "SpellRegs 1", "SpellRegs 97", "DisableCasting",
                            "Meditate", "TypeOnlyInFront", "FindWineTools", "MeditateLevel",
                            "RegYellow", "ColorWarn", "SpellTimerMode", "InTown 0", "InTown 96"}) {
        store = MemorySettingsStore();
        store.Put("Settings", key, "no");
        store.Put("Settings", "CurrentPlayerName", "Mira");
        state = StartedState();
        EXPECT_EQ(FailureOfGlobalLoad(), FailureKind::kTypeMismatch) << key;
        EXPECT_EQ(state.CurrentPlayerName, "") << key;
    }
}

TEST_F(SettingsIoTest, FailedGlobalLoad_KeepsWhatWasReadBefore) {
    store.Put("Settings", "MR price", "9");
    store.Put("Settings", "Macro 1", "ACSX");
    store.Put("Settings", "DisableCasting", "maybe");
    state.RegYellow = 11;
    EXPECT_EQ(FailureOfGlobalLoad(), FailureKind::kTypeMismatch);
    EXPECT_EQ(state.RegPrice(1), 9);
    EXPECT_EQ(state.RegPrice(14), 1);
    EXPECT_EQ(MacroOf(state, 1), (Macro{true, true, true, "X"}));
    EXPECT_EQ(state.RegYellow, 11);
}

TEST_F(SettingsIoTest, ValueOverItsRange_FailsAsOverflow) {
    struct Row {
        const char* key;
        const char* text;
    };
    for (const Row& row : {Row{"MR price", "32768"},
                           {"InTown 3", "256"},
                           {"InTown 3", "-1"},
                           {"ColorWarn", "4294967296"},
                           {"RegYellow", "-32769"}}) {
        store = MemorySettingsStore();
        store.Put("Settings", row.key, row.text);
        EXPECT_EQ(FailureOfGlobalLoad(), FailureKind::kOverflow) << row.key;
    }
}

}  // namespace
}  // namespace spellwick
