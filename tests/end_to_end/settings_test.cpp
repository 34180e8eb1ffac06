// The settings dialog in the real program: opened, used by mouse and keyboard, closed, and the same
// after a restart.
#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/end_to_end/settings_desk.h"

namespace spellwick::testing_support {
namespace {

TEST_F(SettingsInTheProgram, Options_AreStoredWhenTheyAreClicked) {
    PrepareMage(kMira, 10);
    StartBoth();
    OpenTab(kOptions);
    Tabs(1);
    m_desk->Tap(XKB_KEY_space);
    EXPECT_TRUE(WaitStored(kGlobal, "AlwaysOnTop", "True"));
    Tabs(3);
    m_desk->Tap(XKB_KEY_space);
    EXPECT_TRUE(WaitStored(kGlobal, "DisableCasting", "False"));
    Tabs(1);
    m_desk->Tap(XKB_KEY_space);
    EXPECT_TRUE(WaitStored(kGlobal, "Meditate", "True"));
    Tabs(1);
    m_desk->Type("45");
    EXPECT_EQ(Stored(kGlobal, "MeditateLevel"), "") << "a number waits for OK";
    PressOk();
    EXPECT_TRUE(WaitStored(kGlobal, "MeditateLevel", "45"));
    ASSERT_EQ(CloseSpellwick(), 0);

    StartSpellwick();
    OpenTab(kOptions);
    Tabs(1);
    m_desk->Tap(XKB_KEY_space);
    EXPECT_TRUE(WaitStored(kGlobal, "AlwaysOnTop", "False")) << "it was ticked";
    Tabs(5);
    m_desk->Tap(XKB_KEY_End);
    m_desk->Type("6");
    PressOk();
    EXPECT_TRUE(WaitStored(kGlobal, "MeditateLevel", "456")) << "45 stood there";
    EXPECT_EQ(CloseSpellwick(), 0);
}

TEST_F(SettingsInTheProgram, SpellsAndReagents_EditsAreThereAfterTheNextStart) {
    PrepareMage(kMira, 10);
    StartBoth();
    OpenTab(kSpells);
    // Pictures, then the first cell of the first spell.
    Tabs(1);
    m_desk->Tap(XKB_KEY_space);
    EXPECT_TRUE(WaitStored(kGlobal, "Pictures", "1"));
    Tabs(1);
    m_desk->Type("7");
    CloseDialog();
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kGlobal, "SpellRegs 1").substr(0, 1), "7");

    StartSpellwick();
    OpenTab(kSpells);
    Tabs(2);
    m_desk->Type("+");
    CloseDialog();
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kGlobal, "SpellRegs 1").substr(0, 1), "0") << "a lone sign reads as nothing";
    EXPECT_EQ(Stored(kGlobal, "Pictures"), "1");
}

TEST_F(SettingsInTheProgram, UserSpellAndText_BelongToTheCharacter) {
    PrepareMage(kMira, 10);
    StartBoth();
    ASSERT_TRUE(WaitCharacter("Mira Talon"));
    OpenTab(kUserSpells);
    m_desk->Tap(XKB_KEY_Down);
    m_desk->Tap(XKB_KEY_Down);
    PressOk();
    EXPECT_TRUE(WaitStored(kMira, "User1", "2"));

    OpenDialog();
    // The tab that was open is kept; the focus returns to where it was, on OK.
    Tabs(1 + kSpellTexts);
    m_desk->Tap(XKB_KEY_space);
    m_desk->RestingPicture(m_dialog);
    Tabs(1);
    m_desk->Type("123");
    PressOk();
    EXPECT_TRUE(WaitStored(kMira, "SpellText 0 0", "123"));
    ASSERT_EQ(CloseSpellwick(), 0);

    StartSpellwick();
    ASSERT_TRUE(WaitCharacter("Mira Talon"));
    OpenTab(kUserSpells);
    m_desk->Tap(XKB_KEY_Down);
    PressOk();
    EXPECT_TRUE(WaitStored(kMira, "User1", "3")) << "2 was chosen";
    ASSERT_EQ(CloseSpellwick(), 0);

    StartSpellwick();
    ASSERT_TRUE(WaitCharacter("Mira Talon"));
    OpenTab(kSpellTexts);
    Tabs(1);
    m_desk->Tap(XKB_KEY_End);
    m_desk->Type("4");
    PressOk();
    EXPECT_TRUE(WaitStored(kMira, "SpellText 0 0", "1234")) << "123 stood there";
    EXPECT_EQ(CloseSpellwick(), 0);
}

TEST_F(SettingsInTheProgram, Place_IsKeptToThePixelHoweverOftenItIsOpened) {
    PrepareMage(kMira, 10);
    Prepare(kGlobal, {{"SettingsTop", "1800"}, {"SettingsLeft", "2400"}});
    StartBoth();
    OpenDialog();
    const Area first = m_desk->AreaOf(m_dialog);
    for (int again = 0; again < 3; ++again) {
        CloseDialog();
        EXPECT_EQ(Stored(kGlobal, "SettingsTop"), "1800");
        EXPECT_EQ(Stored(kGlobal, "SettingsLeft"), "2400");
        OpenDialog();
        EXPECT_EQ(m_desk->AreaOf(m_dialog), first);
    }
    CloseDialog();
    ASSERT_EQ(CloseSpellwick(), 0);
    StartSpellwick();
    OpenDialog();
    EXPECT_EQ(m_desk->AreaOf(m_dialog), first);
    CloseDialog();
    EXPECT_EQ(CloseSpellwick(), 0);
}

TEST_F(SettingsInTheProgram, EndSignal_WithTheDialogOpen_SavesItsPlaceAndAllMacros) {
    PrepareMage(kMira, 10);
    Prepare(kGlobal, {{"Macro 3", "A--Z"}});
    StartBoth();
    OpenDialog();
    Spellwick().Signal(SIGTERM);
    EXPECT_EQ(Spellwick().WaitForEnd(std::chrono::seconds(10)), 0);
    EXPECT_EQ(Stored(kGlobal, "Macro 3"), "A--Z");
    EXPECT_EQ(Stored(kGlobal, "Macro 1"), "A--1");
    EXPECT_EQ(Stored(kGlobal, "SettingsTop"), "0");
}

TEST_F(SettingsInTheProgram, End_WithTheDialogNeverOpened_SavesItsPlaceAndAllMacros) {
    PrepareMage(kMira, 10);
    Prepare(kGlobal, {{"Macro 3", "A--Z"}, {"SettingsTop", "1800"}});
    StartBoth();
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kGlobal, "Macro 3"), "A--Z");
    EXPECT_EQ(Stored(kGlobal, "Macro 1"), "A--1");
    EXPECT_EQ(Stored(kGlobal, "Macro 96"), "---AA");
    EXPECT_EQ(Stored(kGlobal, "SettingsTop"), "1800");
    EXPECT_EQ(Stored(kGlobal, "SettingsLeft"), "0");
}

TEST_F(SettingsInTheProgram, DialogIsModal_TheMainWindowTakesNoClick) {
    PrepareMage(kMira, 10);
    StartBoth();
    OpenDialog();
    ClickSpell(3);
    m_desk->RestingPicture(Window());
    EXPECT_THAT(Typed(), testing::IsEmpty());
    CloseDialog();
    EXPECT_EQ(CloseSpellwick(), 0);
}

}  // namespace
}  // namespace spellwick::testing_support
