// What the dialog's settings become at the start, before there is a dialog.
#include "companion/settings_at_start.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/spell_data.h"
#include "store/macro_code.h"
#include "store/settings_io.h"
#include "tests/support/memory_settings_store.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

class SettingsAtStartTest : public testing::Test {
  protected:
    // The state as the start leaves it before the dialog's turn.
    void LoadState() {
        InitReagentTables(m_state);
        ASSERT_TRUE(LoadSpellData(m_state, SPELLWICK_SOURCE_FOLDER "/data/SpellData.txt"));
        m_state.Spellbook.Fill(1);
        SettingsIo(m_state, m_store, [](PlayerPart) {}).LoadGlobalSettings();
    }
    SettingsAtStart TakeIn() { return TakeInSettings(m_state, m_store); }
    void Save(const char* key, const char* value) { m_store.Put("Settings", key, value); }

    SharedState m_state;
    MemorySettingsStore m_store;
};

TEST_F(SettingsAtStartTest, Place_IsTheSavedOne) {
    Save("SettingsTop", "1500");
    Save("SettingsLeft", "2400");
    LoadState();
    const SettingsAtStart start = TakeIn();
    EXPECT_EQ(start.place.top, 1500.0F);
    EXPECT_EQ(start.place.left, 2400.0F);
}

TEST_F(SettingsAtStartTest, Place_NoNumberOrBeyondAllWindows_IsZero) {
    Save("SettingsTop", "a lot");
    Save("SettingsLeft", "1e30");
    LoadState();
    const SettingsAtStart start = TakeIn();
    EXPECT_EQ(start.place.top, 0.0F);
    EXPECT_EQ(start.place.left, 0.0F);
}

TEST_F(SettingsAtStartTest, Players_AreThoseOfTheMoment) {
    LoadState();
    m_store.Put("Ultima Online - Mira Talon (Atlantic)", "Magery", "100");
    const SettingsAtStart start = TakeIn();
    m_store.Put("Ultima Online - Bran (Atlantic)", "Magery", "10");
    EXPECT_THAT(start.players, ElementsAre("Ultima Online - Mira Talon (Atlantic)"));
}

TEST_F(SettingsAtStartTest, Macros_AreReadAsTheDialogReadsThem) {
    Save("Macro 5", "AC-X");
    LoadState();
    TakeIn();
    EXPECT_EQ(MacroCode(MacroOf(m_state, 5)), "AC-X");
    EXPECT_EQ(MacroCode(MacroOf(m_state, 6)), DefaultMacroCode(6));
    for (i32 number = 91; number <= 96; ++number) {
        EXPECT_EQ(MacroCode(MacroOf(m_state, number)), kUnsavedMacro) << number;
    }
}

TEST_F(SettingsAtStartTest, Prices_OfMageryLoseTheirFourthDigitAndTheCostsFollow) {
    LoadState();
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        m_state.RegPrice(reagent) = 1234;
    }
    TakeIn();
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        EXPECT_EQ(m_state.RegPrice(reagent), reagent < kFirstNecroReagent ? 123 : 1234) << reagent;
    }
    // Clumsy takes one Blood Moss and one Nightshade.
    EXPECT_EQ(m_state.Spells(0).Cost, 246);
}

TEST_F(SettingsAtStartTest, Limits_KeepFourCharacters) {
    LoadState();
    m_state.MeditateLevel = 12345;
    m_state.RegYellow = -1234;
    TakeIn();
    EXPECT_EQ(m_state.MeditateLevel, 1234);
    EXPECT_EQ(m_state.RegYellow, -123);
}

TEST_F(SettingsAtStartTest, Circles_AreLevelledAndOtherPagesAreNot) {
    LoadState();
    for (i32 row = 0; row <= 95; ++row) {
        m_state.Spells(row).MinimumSkill = static_cast<i16>(row);
    }
    TakeIn();
    EXPECT_EQ(m_state.Spells(63).MinimumSkill, 56);
    EXPECT_EQ(m_state.Spells(95).MinimumSkill, 95);
}

TEST_F(SettingsAtStartTest, CostsThatOverflow_SkipTheirStepOnly) {
    Save("Macro 5", "AC-X");
    LoadState();
    SetMacro(m_state, 5, {});
    m_state.RegPrice(1) = m_state.RegPrice(2) = m_state.RegPrice(3) = 32767;
    TakeIn();
    EXPECT_EQ(m_state.RegPrice(1), 32767);
    EXPECT_EQ(MacroCode(MacroOf(m_state, 5)), "AC-X");
}

}  // namespace
}  // namespace spellwick
