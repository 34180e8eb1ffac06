#include "store/settings_io.h"

#include <gmock/gmock.h>

#include "store/digit_string.h"
#include "tests/store/settings_io_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

TEST_F(SettingsIoTest, CleanStore_ReadsNoPlayerAndKeepsTheBook) {
    io.LoadGlobalSettings();
    EXPECT_THAT(store.SectionsRead(), ElementsAre("Settings"));
    EXPECT_TRUE(view.calls.empty());
    EXPECT_EQ(state.CurrentPlayerName, "");
    EXPECT_EQ(PlayerDifferences(state, StartedState()), "");
    for (i32 row = 0; row <= 96; ++row) {
        EXPECT_EQ(state.Spellbook(row), 1);
    }
}

TEST_F(SettingsIoTest, MeditationMacro_IsRead) {
    store.Put("Settings", "Macro-1", "AC-X");
    io.LoadGlobalSettings();
    EXPECT_EQ(MacroOf(state, -1), (Macro{true, true, false, "X"}));
}

TEST_F(SettingsIoTest, MeditationMacro_MarkOfNothingIsTakenAsItStands) {
    store.Put("Settings", "Macro-1", "---AA");
    io.LoadGlobalSettings();
    EXPECT_EQ(MacroOf(state, -1), (Macro{false, false, false, "AA"}));
}

TEST_F(SettingsIoTest, ShortMacro_HasNoModifiersAndABlank) {
    store.Put("Settings", "Macro 5", "AB");
    io.LoadGlobalSettings();
    EXPECT_EQ(MacroOf(state, 5), (Macro{false, false, false, " "}));
}

TEST_F(SettingsIoTest, MacroSavedAsMarkOfNothing_IsTheDefaultOfItsPageAndSlot) {
    store.Put("Settings", "Macro 5", "---AA");
    io.LoadGlobalSettings();
    EXPECT_EQ(MacroCode(MacroOf(state, 5)), "A--5");
}

TEST_F(SettingsIoTest, StockKeyDb3_IsReagent10OfBag3) {
    store.Put("Mira", "DB 3", "7");
    io.LoadPlayerSettings("Mira");
    EXPECT_EQ(state.ReagentStock(10, 3), 7);
    EXPECT_EQ(state.ReagentStock(11, 3), 0);
}

TEST_F(SettingsIoTest, AmountOf10OrMore_IsNotKept) {
    state.Spells(0).Reagents(1) = 12;
    state.Spells(0).Reagents(2) = 3;
    ASSERT_TRUE(io.SaveGlobalSettings({}).ok);
    io.LoadGlobalSettings();
    EXPECT_EQ(state.Spells(0).Reagents(1), 1);
    EXPECT_EQ(state.Spells(0).Reagents(2), 3);
}

TEST_F(SettingsIoTest, DigitString_GivesAshAndMossAndNoTithes) {
    store.Put("Settings", "SpellRegs 14", "011000000000000");
    state.Spells(13).Reagents.Fill(9);
    io.LoadGlobalSettings();
    ReagentAmounts expected;
    expected(2) = 1;
    expected(3) = 1;
    EXPECT_EQ(state.Spells(13).Reagents, expected);
    EXPECT_EQ(state.Spells(13).Cost, 9);
}

// covers ODDITY(first-start-tithes)
TEST_F(SettingsIoTest, Oddity_FirstStartReadsTithesOfTheFileThroughOneDigit) {
    state.Spells(80).Reagents(14) = 15;
    state.Spells(81).Reagents(14) = 5;
    state.Spells(82).Reagents(14) = 20;
    state.Spells(83).Reagents(14) = 10;
    io.LoadGlobalSettings();
    EXPECT_EQ(state.Spells(80).Reagents(14), 10);
    EXPECT_EQ(state.Spells(81).Reagents(14), 50);
    EXPECT_EQ(state.Spells(82).Reagents(14), 20);
    EXPECT_EQ(state.Spells(83).Reagents(14), 10);
    EXPECT_EQ(state.Spells(81).Cost, 50);
}

TEST_F(SettingsIoTest, PlayerLoad_ShowsInTheOrderOfItsSteps) {
    store.Put("Mira", "Bag 0", "Satchel");
    store.Put("Mira", "MR 2", "12");
    store.Put("Mira", "CurrentTithing", " 500");
    store.Put("Mira", "CurrentReagentBag", "2");
    store.Put("Mira", "LeftReagentBag", "6");
    store.Put("Mira", "User1", "13");
    state.LeftReagentBag = -1;
    view.onCall = [this](const std::string& call) {
        if (call == "bag names") {
            EXPECT_EQ(state.BagName(0), "Satchel");
            EXPECT_EQ(state.ReagentStock(1, 2), 0);
        } else if (call == "bag") {
            EXPECT_EQ(state.ReagentStock(1, 2), 12);
            EXPECT_EQ(state.CurrentTithing, 500);
            EXPECT_EQ(state.CurrentReagentBag, 2);
            EXPECT_EQ(state.LeftReagentBag, -1);
        } else if (call == "stock") {
            EXPECT_EQ(state.LeftReagentBag, 6);
        } else {
            EXPECT_EQ(state.UserSpells(0), 0);
        }
    };
    io.LoadPlayerSettings("Mira");
    EXPECT_THAT(view.calls, ElementsAre("bag names", "bag", "stock", "tithes"));
    EXPECT_EQ(state.UserSpells(0), 13);
}

TEST_F(SettingsIoTest, PlayerLoad_BagOutsideTheTenShowsNoStock) {
    for (const char* bag : {"-1", "10"}) {
        store.Put("Mira", "CurrentReagentBag", bag);
        view.calls.clear();
        io.LoadPlayerSettings("Mira");
        EXPECT_THAT(view.calls, ElementsAre("bag names", "bag", "tithes")) << bag;
    }
}

TEST_F(SettingsIoTest, PlayerLoad_ManaIsTheIntelligence) {
    store.Put("Mira", "Intelligence", "85");
    io.LoadPlayerSettings("Mira");
    EXPECT_EQ(state.CurrentMana, 85);
}

TEST_F(SettingsIoTest, PlayerLoad_IsOneReadOfTheSection) {
    io.LoadPlayerSettings("Mira");
    EXPECT_THAT(store.SectionsRead(), ElementsAre("Mira"));
}

TEST_F(SettingsIoTest, EmptyName_LoadsAndSavesNothing) {
    FillPlayer(state, 3);
    const SharedState before = state;
    io.LoadPlayerSettings("");
    EXPECT_TRUE(io.SavePlayerSettings("").ok);
    EXPECT_EQ(PlayerDifferences(before, state), "");
    EXPECT_TRUE(view.calls.empty());
    EXPECT_TRUE(store.SectionsRead().empty());
    EXPECT_TRUE(store.Batches().empty());
}

TEST_F(SettingsIoTest, KeysCompareExactly) {
    store.Put("Mira", "magery", "50");
    store.Put("mira", "Magery", "60");
    io.LoadPlayerSettings("Mira");
    EXPECT_EQ(state.Magery, 0);
}

TEST_F(SettingsIoTest, Prices_DecideTheCosts) {
    state.Spells(0).Reagents(1) = 2;
    store.Put("Settings", "MR price", "10");
    io.LoadGlobalSettings();
    EXPECT_EQ(state.Spells(0).Cost, 20);
}

TEST_F(SettingsIoTest, GlobalLoad_LoadsThePlayerThatWasLast) {
    store.Put("Settings", "CurrentPlayerName", "Mira");
    store.Put("Mira", "Magery", "100");
    io.LoadGlobalSettings();
    EXPECT_EQ(state.CurrentPlayerName, "Mira");
    EXPECT_EQ(state.Magery, 100);
}

TEST_F(SettingsIoTest, PlayerNamedLikeTheGlobalSection_HasAPlaceOfItsOwn) {
    FillPlayer(state, 4);
    state.CurrentPlayerName = "Settings";
    ASSERT_TRUE(io.SaveGlobalSettings({}).ok);
    SharedState loaded = StartedState();
    SettingsIo(loaded, store, view).LoadGlobalSettings();
    EXPECT_EQ(loaded.CurrentPlayerName, "Settings");
    EXPECT_EQ(PlayerDifferences(state, loaded), "");
    EXPECT_FALSE(store.Read("Settings", "Magery").has_value());
}

TEST_F(SettingsIoTest, WhileConverting_ThePlayerIsReadFromTheGlobalSectionOrFromNowhere) {
    store.Put("Settings", "Magery", "1");
    store.Put("DoesNotExist", "Magery", "2");
    store.Put("Mira", "Magery", "3");
    struct Row {
        const char* name;
        bool converting;
        bool toAllSlots;
        i16 player;
        i16 magery;
    };
    for (const Row& row : {Row{"not converting", false, true, 1, 3},
                           {"to all slots", true, true, 0, 1},
                           {"first player", true, false, 1, 1},
                           {"player not counted", true, false, 0, 0},
                           {"second player", true, false, 2, 0}}) {
        io.Progress().Converting = row.converting;
        io.Progress().ConvertToAllSlots = row.toAllSlots;
        io.Progress().ConvertPlayer = row.player;
        state.Magery = 99;
        io.LoadPlayerSettings("Mira");
        EXPECT_EQ(state.Magery, row.magery) << row.name;
    }
}

TEST_F(SettingsIoTest, WhileConverting_AnEmptyNameIsReadToo) {
    store.Put("Settings", "Magery", "1");
    io.Progress().Converting = true;
    io.Progress().ConvertToAllSlots = true;
    io.LoadPlayerSettings("");
    EXPECT_EQ(state.Magery, 1);
    io.Progress().ConvertToAllSlots = false;
    io.LoadPlayerSettings("");
    EXPECT_EQ(state.Magery, 0);
}

TEST_F(SettingsIoTest, WithoutASpellTable_ThePlayerLoadStopsAtTheSpellTexts) {
    state.Spells.Clear();
    store.Put("Mira", "Magery", "100");
    EXPECT_EQ(FailureOfPlayerLoad(), FailureKind::kSubscript);
    EXPECT_EQ(state.Magery, 100);
    EXPECT_EQ(state.SpellTextSuffix, "... Alakazam ...");
}

TEST_F(SettingsIoTest, Position_IsReadAsAFraction) {
    store.Put("Settings", "WindowTop", "40000");
    store.Put("Settings", "WindowLeft", "-0.5");
    store.Put("Settings", "TimerTop", "here");
    EXPECT_EQ(io.ReadPosition("WindowTop"), 40000.0F);
    EXPECT_EQ(io.ReadPosition("WindowLeft"), -0.5F);
    EXPECT_EQ(FailureOf([this] { io.ReadPosition("TimerTop"); }), FailureKind::kTypeMismatch);
}

TEST_F(SettingsIoTest, AThousandRandomStates_ComeBack_Long) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        SharedState saved = StartedState();
        FillPlayer(saved, seed);
        FillGlobals(saved, seed);
        saved.CurrentPlayerName = "player " + std::to_string(seed);
        SaveAll(saved, store, view);
        SharedState loaded = StartedState();
        SettingsIo(loaded, store, view).LoadGlobalSettings();
        ASSERT_EQ(PlayerDifferences(saved, loaded), "") << "seed " << seed;
        ASSERT_EQ(GlobalDifferences(saved, loaded), "") << "seed " << seed;
        ASSERT_EQ(loaded.CurrentMana, saved.Intelligence) << "seed " << seed;
    }
}

}  // namespace
}  // namespace spellwick
