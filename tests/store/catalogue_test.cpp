// Every key, its text and its default, against a literal list.
#include <fstream>
#include <initializer_list>

#include <gtest/gtest.h>

#include "store/settings_io.h"
#include "store/text_forms.h"
#include "tests/store/store_test_tools.h"
#include "tests/support/memory_settings_store.h"

namespace spellwick {
namespace {

constexpr const char* kPlayer = "Ultima Online - Mira Talon (Atlantic)";

std::vector<SettingChange> ReadList(const std::string& name) {
    std::ifstream file(std::string(STORE_TEST_DATA) + "/" + name);
    std::vector<SettingChange> list;
    for (std::string line; std::getline(file, line);) {
        const std::size_t first = line.find('|');
        const std::size_t second = line.find('|', first + 1);
        list.push_back({line.substr(0, first), line.substr(first + 1, second - first - 1),
                        line.substr(second + 1)});
    }
    return list;
}

std::string Show(const SettingChange& change) {
    return change.section + "|" + change.key + "|" + change.value.value_or("(removed)");
}

void ExpectSame(const std::vector<SettingChange>& written,
                const std::vector<SettingChange>& expected) {
    ASSERT_EQ(written.size(), expected.size());
    for (std::size_t i = 0; i < written.size(); ++i) {
        EXPECT_EQ(Show(written[i]), Show(expected[i])) << "change " << i;
    }
}

// A state in which every saved variable has a different value.
SharedState DistinctState() {
    SharedState state = StartedState();
    state.CurrentPlayerName = kPlayer;
    for (i32 reagent = 1; reagent <= 13; ++reagent) {
        state.RegPrice(reagent) = static_cast<i16>(30 + reagent);
    }
    state.RegPrice(14) = 1;
    for (i32 row = 0; row <= 96; ++row) {
        for (i32 reagent = 1; reagent <= 13; ++reagent) {
            state.Spells(row).Reagents(reagent) = static_cast<unsigned char>((row + reagent) % 10);
        }
        state.Spells(row).Reagents(14) = static_cast<unsigned char>(10 + row % 90);
        state.Spells(row).InTown = static_cast<unsigned char>(row);
        state.Spells(row).SpellText = "words of " + std::to_string(row);
        state.Spellbook(row) = static_cast<i16>(200 + row);
    }
    state.Spells(96).SpellText.clear();
    for (i32 bag = 0; bag <= 9; ++bag) {
        state.BagName(bag) = "Bag name " + std::to_string(bag);
        for (i32 reagent = 1; reagent <= 13; ++reagent) {
            state.ReagentStock(reagent, bag) = static_cast<i16>(100 * reagent + bag);
        }
    }
    state.CurrentTithing = 4711;
    state.CurrentReagentBag = 3;
    state.LeftReagentBag = 4;
    state.RightReagentBag = 5;
    for (i32 cell = 0; cell <= 15; ++cell) {
        state.UserSpells(cell) = static_cast<i16>(20 + cell);
    }
    state.EvalInt = 11;
    state.Magery = 12;
    state.TargetResist = 13;
    state.Necro = 14;
    state.Chivalry = 15;
    state.SpiritSpeak = 16;
    state.Intelligence = 17;
    state.Dexterity = 18;
    state.TargetInt = 19;
    state.SendSpellText = 21;
    state.SendSpellSuffix = 22;
    state.SpellTextSuffix = "the suffix";
    state.MeditateLevel = 51;
    state.RegYellow = 52;
    state.ColorWarn = 65793;
    for (i32 number = -1; number <= 96; ++number) {
        const i32 bits = number + 2;
        SetMacro(state, number,
                 {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, "K" + std::to_string(number)});
    }
    SetMacro(state, 0, {});
    return state;
}

TEST(Catalogue, SaveGlobalSettings_WritesEveryKeyInOrderInOneBatch) {
    SharedState state = DistinctState();
    MemorySettingsStore store;
    RecordingView view;
    const StoreResult result =
        SettingsIo(state, store, view)
            .SaveGlobalSettings({{{1500.5F, -15.0F}}, {{3000.0F, 4500.25F}}});
    EXPECT_TRUE(result.ok);
    ASSERT_EQ(store.Batches().size(), 1U);
    const std::vector<SettingChange> expected = ReadList("saved_settings.txt");
    ASSERT_EQ(expected.size(), 579U);
    ExpectSame(store.Batches()[0], expected);
}

TEST(Catalogue, SaveMacros_WritesAll98AfterThePosition) {
    SharedState state = DistinctState();
    MemorySettingsStore store;
    RecordingView view;
    EXPECT_TRUE(SettingsIo(state, store, view).SaveMacros({{600.0F, 700.5F}}).ok);
    ASSERT_EQ(store.Batches().size(), 1U);
    const std::vector<SettingChange> expected = ReadList("saved_macros.txt");
    ASSERT_EQ(expected.size(), 100U);
    ExpectSame(store.Batches()[0], expected);
}

TEST(Catalogue, SavedKeys_AreReadBackIntoTheirVariables) {
    SharedState saved = DistinctState();
    MemorySettingsStore store;
    for (const char* list : {"saved_settings.txt", "saved_macros.txt"}) {
        for (const SettingChange& change : ReadList(list)) {
            store.Put(change.section, change.key, change.value.value_or(""));
        }
    }
    struct Switch {
        const char* key;
        bool SharedState::*cell;
    };
    for (const Switch& option : {Switch{"DisableCasting", &SharedState::DisableCasting},
                                 {"DisplayVertical", &SharedState::DisplayVertical},
                                 {"AlwaysOnTop", &SharedState::AlwaysOnTop},
                                 {"ShowNecroRegs", &SharedState::ShowNecroRegs},
                                 {"Meditate", &SharedState::Meditate},
                                 {"TypeOnlyInFront", &SharedState::CheckFront},
                                 {"EnterOpensChat", &SharedState::EnterOpensChat},
                                 {"FindWineTools", &SharedState::FindWineTools},
                                 {"KeysOnIcons", &SharedState::KeysOnIcons},
                                 {"SecondsOnIcons", &SharedState::SecondsOnIcons}}) {
        for (const bool on : {true, false}) {
            store.Put("Settings", option.key, on ? "True" : "False");
            saved.*option.cell = on;
            SharedState loaded = StartedState();
            RecordingView view;
            SettingsIo(loaded, store, view).LoadGlobalSettings();
            EXPECT_EQ(loaded.*option.cell, on) << option.key;
        }
    }
    store.Put("Settings", "SpellTimerMode", "7");
    saved.SpellTimerMode = 7;
    store.Put("Settings", "TextHold", "7");
    saved.TextHold = 7;
    store.Put("Settings", "TextGap", "8");
    saved.TextGap = 8;
    SharedState loaded = StartedState();
    RecordingView view;
    SettingsIo(loaded, store, view).LoadGlobalSettings();
    EXPECT_EQ(PlayerDifferences(saved, loaded), "");
    EXPECT_EQ(GlobalDifferences(saved, loaded), "");
    EXPECT_EQ(loaded.Spells(96).SpellText, "");
}

TEST(Catalogue, PaceOfTexts_ABadValueIsTheDefault) {
    struct Row {
        const char* text;
        i16 time;
    };
    for (const Row& row : {Row{"1", 1}, Row{"25", 25}, Row{"200", 200}, Row{"", 4}, Row{"0", 4},
                           Row{"-3", 4}, Row{"201", 4}, Row{"99999999999", 4}, Row{"fast", 4},
                           Row{"5 ms", 4}, Row{" 5", 4}, Row{"2.5", 4}}) {
        for (const char* key : {"TextHold", "TextGap"}) {
            MemorySettingsStore store;
            store.Put("Settings", key, row.text);
            SharedState state = StartedState();
            RecordingView view;
            SettingsIo(state, store, view).LoadGlobalSettings();
            const bool isHold = std::string_view(key) == "TextHold";
            EXPECT_EQ(isHold ? state.TextHold : state.TextGap, row.time) << row.text;
            EXPECT_EQ(isHold ? state.TextGap : state.TextHold, 4) << row.text;
        }
    }
}

TEST(Catalogue, SpellRegs97_IsReadThoughNeverWritten) {
    MemorySettingsStore store;
    store.Put("Settings", "SpellRegs 97", "123456789012342");
    SharedState state = StartedState();
    RecordingView view;
    SettingsIo io(state, store, view);
    io.LoadGlobalSettings();
    EXPECT_EQ(state.Spells(96).Reagents(9), 9);
    EXPECT_EQ(state.Spells(96).Reagents(14), 42);
    EXPECT_GT(state.Spells(96).Cost, 0);
    ASSERT_TRUE(io.SaveGlobalSettings({}).ok);
    for (const SettingChange& change : store.Batches()[0]) {
        EXPECT_NE(change.key, "SpellRegs 97");
    }
}

TEST(Catalogue, GlobalDefaults_AreAsWritten) {
    MemorySettingsStore store;
    SharedState state = StartedState();
    for (i32 row = 0; row <= 96; ++row) {
        state.Spells(row).Reagents(2) = 1;
        state.Spells(row).InTown = row % 2 == 0 ? 1 : 0;
    }
    RecordingView view;
    SettingsIo io(state, store, view);
    io.LoadGlobalSettings();
    const i16 prices[] = {3, 3, 6, 3, 3, 6, 3, 3, 3, 3, 6, 6, 5, 1};
    for (i32 reagent = 1; reagent <= 14; ++reagent) {
        EXPECT_EQ(state.RegPrice(reagent), prices[reagent - 1]) << reagent;
    }
    for (i32 row = 0; row <= 96; ++row) {
        EXPECT_EQ(state.Spells(row).Reagents(1), 0) << row;
        EXPECT_EQ(state.Spells(row).Reagents(2), 1) << row;
        EXPECT_EQ(state.Spells(row).InTown, row % 2 == 0 ? 1 : 0) << row;
        EXPECT_EQ(state.Spells(row).Cost, 3) << row;
    }
    EXPECT_TRUE(state.DisableCasting);
    EXPECT_FALSE(state.DisplayVertical);
    EXPECT_FALSE(state.AlwaysOnTop);
    EXPECT_TRUE(state.ShowNecroRegs);
    EXPECT_FALSE(state.Meditate);
    EXPECT_TRUE(state.CheckFront);
    EXPECT_FALSE(state.EnterOpensChat);
    EXPECT_FALSE(state.FindWineTools);
    EXPECT_FALSE(state.KeysOnIcons);
    EXPECT_FALSE(state.SecondsOnIcons);
    EXPECT_EQ(state.TextHold, 4);
    EXPECT_EQ(state.TextGap, 4);
    EXPECT_EQ(state.MeditateLevel, 20);
    EXPECT_EQ(state.RegYellow, 3);
    EXPECT_EQ(state.ColorWarn, 65535);
    EXPECT_EQ(state.SpellTimerMode, 2);
    EXPECT_EQ(state.CurrentPlayerName, "");
    EXPECT_EQ(MacroOf(state, -1), (Macro{false, false, false, " "}));
    EXPECT_EQ(MacroOf(state, 0), Macro{});
    EXPECT_EQ(MacroOf(state, 5), (Macro{true, false, false, "5"}));
    EXPECT_EQ(MacroOf(state, 56), (Macro{true, true, true, "I"}));
    EXPECT_EQ(MacroOf(state, 91), Macro{});
    EXPECT_EQ(MacroOf(state, 96), (Macro{true, true, false, "O"}));
    for (const char* key :
         {"WindowTop", "WindowLeft", "TimerTop", "TimerLeft", "SettingsTop", "SettingsLeft"}) {
        EXPECT_EQ(io.ReadPosition(key), 0.0F) << key;
    }
    EXPECT_TRUE(store.Batches().empty());  // a read writes nothing
    EXPECT_TRUE(store.Sections().empty());
}

TEST(Catalogue, PlayerDefaults_AreAsWritten) {
    MemorySettingsStore store;
    SharedState state = DistinctState();
    state.CurrentMana = 99;
    RecordingView view;
    SettingsIo(state, store, view).LoadPlayerSettings("Somebody new");
    const char* bags[] = {"Red Backpack",    "Blue Backpack", "Green Backpack", "Yellow Backpack",
                          "Purple Backpack", "Crate",         "Chest",          "Pouch",
                          "Wooden box",      "Bank Box"};
    for (i32 bag = 0; bag <= 9; ++bag) {
        EXPECT_EQ(state.BagName(bag), bags[bag]);
        for (i32 reagent = 1; reagent <= 13; ++reagent) {
            EXPECT_EQ(state.ReagentStock(reagent, bag), 0) << reagent << " in " << bag;
        }
    }
    EXPECT_EQ(state.CurrentTithing, 0);
    EXPECT_EQ(state.CurrentReagentBag, 0);
    EXPECT_EQ(state.LeftReagentBag, 0);
    EXPECT_EQ(state.RightReagentBag, 1);
    for (i32 cell = 0; cell <= 15; ++cell) {
        EXPECT_EQ(state.UserSpells(cell), 0) << cell;
    }
    for (i32 row = 0; row <= 96; ++row) {
        EXPECT_EQ(state.Spellbook(row), 1) << row;
        EXPECT_EQ(state.Spells(row).SpellText, "") << row;
    }
    for (i16 SharedState::*cell : std::initializer_list<i16 SharedState::*>{
             &SharedState::EvalInt, &SharedState::Magery, &SharedState::TargetResist,
             &SharedState::Necro, &SharedState::Chivalry, &SharedState::SpiritSpeak,
             &SharedState::Intelligence, &SharedState::Dexterity, &SharedState::TargetInt,
             &SharedState::CurrentMana, &SharedState::SendSpellSuffix}) {
        EXPECT_EQ(state.*cell, 0);
    }
    EXPECT_EQ(state.SendSpellText, 1);
    EXPECT_EQ(state.SpellTextSuffix, "... Alakazam ...");
}

// covers ODDITY(crossed-stock-keys)
TEST(Catalogue, Oddity_StockOfGraveDustAndDaemonBloodIsKeptUnderTheOthersCode) {
    MemorySettingsStore store;
    store.Put("Mira", "DB 3", "30");
    store.Put("Mira", "GD 3", "40");
    store.Put("Settings", "GD price", "7");
    store.Put("Settings", "DB price", "8");
    store.Put("Settings", "CurrentPlayerName", "Mira");
    SharedState state = StartedState();
    RecordingView view;
    SettingsIo io(state, store, view);
    io.LoadGlobalSettings();
    EXPECT_EQ(state.ReagentName(10), "Grave Dust");
    EXPECT_EQ(state.ReagentStock(10, 3), 30);
    EXPECT_EQ(state.ReagentName(11), "Daemon Blood");
    EXPECT_EQ(state.ReagentStock(11, 3), 40);
    EXPECT_EQ(state.RegPrice(10), 7);
    EXPECT_EQ(state.RegPrice(11), 8);
    state.ReagentStock(10, 3) = 31;
    ASSERT_TRUE(io.SavePlayerSettings("Mira").ok);
    EXPECT_EQ(store.Read("Mira", "DB 3"), "31");
    EXPECT_EQ(store.Read("Mira", "GD 3"), "40");
}

}  // namespace
}  // namespace spellwick
