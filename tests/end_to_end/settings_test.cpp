// The settings dialog in the real program: opened, used by mouse and keyboard, closed, and found
// again after the next start.
#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/end_to_end/player_desk.h"

namespace spellwick::testing_support {
namespace {

constexpr int kSettingsButton = 2;

enum Tab { kSpells = 0, kUserSpells = 1, kSpellTexts = 5, kOptions = 7 };

class SettingsInTheProgram : public PlayerDesk {
  protected:
    // Opens the dialog; the focus stands on the first button of the strip at the first opening.
    void OpenDialog() {
        m_desk->Click(Window(), Command(kSettingsButton));
        m_dialog = m_desk->WaitWindow("Spellwick - Settings");
        ASSERT_NE(m_dialog, 0U);
        ASSERT_TRUE(WaitUntil([&] { return m_desk->Session().ActiveWindow() == m_dialog; }));
        m_desk->RestingPicture(m_dialog);
    }
    void Tabs(int count) {
        for (int step = 0; step < count; ++step) {
            m_desk->Tap(XKB_KEY_Tab);
        }
    }
    // Opens the dialog anew and the tab by the keyboard; the focus stands on its first control.
    void OpenTab(int tab) {
        OpenDialog();
        Tabs(tab);
        m_desk->Tap(XKB_KEY_space);
        m_desk->RestingPicture(m_dialog);
    }
    void PressOk() {
        m_desk->Hold(XKB_KEY_Alt_L, true);
        m_desk->Tap(XKB_KEY_o);
        m_desk->Hold(XKB_KEY_Alt_L, false);
        ASSERT_TRUE(m_desk->WaitGone(m_dialog));
    }
    void CloseDialog() {
        m_desk->AskToClose(m_dialog);
        ASSERT_TRUE(m_desk->WaitGone(m_dialog));
    }
    bool WaitStored(const std::string& section, const std::string& key, const std::string& value) {
        return WaitUntil([&] { return Stored(section, key) == value; });
    }

    xcb_window_t m_dialog = 0;
};

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
    // The strip keeps the tab that was open; the focus comes back to where it was: on OK.
    Tabs(1 + kSpellTexts);
    m_desk->Tap(XKB_KEY_space);
    m_desk->RestingPicture(m_dialog);
    Tabs(1);
    m_desk->Type("123");
    PressOk();
    EXPECT_TRUE(WaitStored(kMira, "SpellText 0 0", "123"));
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
