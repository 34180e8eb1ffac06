// Macros, skills and stocks that are edited in the real program and still there after a restart;
// keys that are refused; the client's macro file.
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/end_to_end/settings_desk.h"
#include "tests/support/file_bytes.h"

namespace spellwick::testing_support {
namespace {

namespace fs = std::filesystem;
using testing::Contains;

// The bytes of a part of a window's picture, four for each pixel.
Picture Cut(const Picture& whole, const Area& window, const Area& part) {
    Picture cut;
    for (int y = part.y; y < part.y + part.height; ++y) {
        const auto from =
            whole.begin() + 4 * (static_cast<std::ptrdiff_t>(y) * window.width + part.x);
        cut.insert(cut.end(), from, from + 4 * static_cast<std::ptrdiff_t>(part.width));
    }
    return cut;
}

class TabsInTheProgram : public SettingsInTheProgram {
  protected:
    // Mira with ten of each reagent, and the dialog opened at a tab.
    void StartAtTab(int tab) {
        PrepareMage(kMira, 10);
        StartBoth();
        OpenTab(tab);
    }
    void StartAgain() {
        StartSpellwick();
        ASSERT_TRUE(WaitCharacter("Mira Talon"));
    }
    // Types into the edit of the left bag's first reagent.
    void TypeStock(std::string_view amount) {
        Tabs(2);
        m_desk->Type(amount);
    }
    // Clicks the arrows next to that edit.
    void MoveOneToTheRight() {
        Tabs(1);
        m_desk->Tap(XKB_KEY_Right);
    }
    // The button "OK" at the lower right corner.
    Place Ok() {
        const Area dialog = m_desk->AreaOf(m_dialog);
        return {dialog.width - 45, dialog.height - 18};
    }
    Picture PictureOfOk() {
        const Area dialog = m_desk->AreaOf(m_dialog);
        m_desk->MoveMouse({1200, 900});
        const Picture whole = m_desk->RestingPicture(m_dialog);
        constexpr int kWidth = 95;
        constexpr int kHeight = 34;
        return Cut(whole, dialog,
                   {dialog.width - kWidth, dialog.height - kHeight, kWidth, kHeight});
    }
};

TEST_F(TabsInTheProgram, MacroEdits_AreTypedAfterTheNextStart) {
    StartAtTab(kMacros);
    Tabs(1);
    m_desk->Type("f9");
    Tabs(1);
    m_desk->Tap(XKB_KEY_space);
    Tabs(1);
    m_desk->Tap(XKB_KEY_space);
    CloseDialog();
    EXPECT_EQ(Stored(kGlobal, "Macro 1"), "-C-{F9}");
    ASSERT_EQ(CloseSpellwick(), 0);

    StartAgain();
    m_desk->RestingPicture(Window());
    ClickSpell(0);
    EXPECT_TRUE(WaitUntil([&] { return !Typed().empty(); }));
    EXPECT_THAT(Typed(), Contains("key Ctrl+F9"));
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kGlobal, "Macro 1"), "-C-{F9}");
    EXPECT_EQ(Stored(kGlobal, "Macro 2"), "A--2");
    EXPECT_EQ(Stored(kGlobal, "Macro-1"), "--- ");
}

TEST_F(TabsInTheProgram, SkillEdits_AreThereAfterTheNextStart) {
    StartAtTab(kSkills);
    m_desk->Type("77");
    PressOk();
    EXPECT_TRUE(WaitStored(kMira, "Magery", "77"));
    ASSERT_EQ(CloseSpellwick(), 0);

    StartAgain();
    OpenTab(kSkills);
    m_desk->Tap(XKB_KEY_Up);
    PressOk();
    EXPECT_TRUE(WaitStored(kMira, "Magery", "78"));
    EXPECT_EQ(CloseSpellwick(), 0);
}

TEST_F(TabsInTheProgram, StockEdits_AreThereAfterTheNextStart) {
    StartAtTab(kReagents);
    TypeStock("55");
    MoveOneToTheRight();
    CloseDialog();
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kMira, "MR 0"), "54");
    EXPECT_EQ(Stored(kMira, "MR 1"), "1");

    StartAgain();
    OpenTab(kReagents);
    Tabs(3);
    m_desk->Tap(XKB_KEY_Right);
    CloseDialog();
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kMira, "MR 0"), "53");
    EXPECT_EQ(Stored(kMira, "MR 1"), "2");
}

TEST_F(TabsInTheProgram, StockEdits_OfTheBagInUse_AreWhatACastIsTakenFrom) {
    StartAtTab(kReagents);
    TypeStock("55");
    MoveOneToTheRight();
    CloseDialog();
    m_desk->RestingPicture(Window());
    ClickSpell(1);
    EXPECT_TRUE(WaitUntil([&] { return !Typed().empty(); }));
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kMira, "MR 0"), "53");
    EXPECT_EQ(Stored(kMira, "MR 1"), "1");
}

TEST_F(TabsInTheProgram, AnotherCharacterWhileOpen_KeepsItsOwnStock) {
    PrepareMage(kMira, 10);
    PrepareMage(kBran, 7);
    StartBoth();
    OpenTab(kReagents);
    TypeStock("55");
    // Keys that are still on their way would go to the other character.
    m_desk->RestingPicture(m_dialog);
    TellGame("login 2");
    ASSERT_TRUE(WaitCharacter("Bran Oakley"));
    m_desk->RestingPicture(m_dialog);
    MoveOneToTheRight();
    CloseDialog();
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kMira, "MR 0"), "10");
    EXPECT_EQ(Stored(kBran, "MR 0"), "6");
    EXPECT_EQ(Stored(kBran, "MR 1"), "1");
}

TEST_F(TabsInTheProgram, RefusedKey_TheButtonThatWasPressedIsNotDrawnPressed) {
    StartAtTab(kMacros);
    Tabs(1);
    m_desk->Type("no");
    const Picture before = PictureOfOk();
    m_desk->Click(m_dialog, Ok());
    AnswerBox();
    ASSERT_TRUE(WaitUntil([&] { return m_desk->Session().ActiveWindow() == m_dialog; }));
    EXPECT_EQ(PictureOfOk(), before);
    // The focus is back in the edit, with its text selected.
    m_desk->Type("q");
    PressOk();
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kGlobal, "Macro 1"), "A--q");
}

TEST_F(TabsInTheProgram, RefusedKey_EveryWayOutAsksOnceAndStays_EscapeGoes) {
    StartAtTab(kMacros);
    Tabs(1);
    m_desk->Type("no");
    const auto back = [&] { return m_desk->Session().ActiveWindow() == m_dialog; };
    for (int attempt = 0; attempt < 2; ++attempt) {
        m_desk->Click(m_dialog, Ok());
        AnswerBox();
        ASSERT_TRUE(WaitUntil(back)) << "OK";
        m_desk->RestingPicture(m_dialog);
        m_desk->Hold(XKB_KEY_Alt_L, true);
        m_desk->Tap(XKB_KEY_o);
        m_desk->Hold(XKB_KEY_Alt_L, false);
        AnswerBox();
        ASSERT_TRUE(WaitUntil(back)) << "Alt+O";
        m_desk->RestingPicture(m_dialog);
        m_desk->AskToClose(m_dialog);
        AnswerBox();
        ASSERT_TRUE(WaitUntil(back)) << "X";
        m_desk->RestingPicture(m_dialog);
    }
    m_desk->Tap(XKB_KEY_Escape);
    ASSERT_TRUE(m_desk->WaitGone(m_dialog));
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kGlobal, "Macro 1"), "A--1");
}

TEST_F(TabsInTheProgram, EndSignal_TakesAnEntryAndAsksNothing) {
    StartAtTab(kReagents);
    TypeStock("+99");
    m_desk->RestingPicture(m_dialog);
    Spellwick().Signal(SIGTERM);
    EXPECT_EQ(Spellwick().WaitForEnd(std::chrono::seconds(10)), 0) << "the move is refused";
    EXPECT_EQ(Stored(kMira, "MR 0"), "10");

    StartAgain();
    OpenTab(kReagents);
    TypeStock("-4");
    m_desk->RestingPicture(m_dialog);
    Spellwick().Signal(SIGTERM);
    EXPECT_EQ(Spellwick().WaitForEnd(std::chrono::seconds(10)), 0);
    EXPECT_EQ(Stored(kMira, "MR 0"), "6");
    EXPECT_EQ(Stored(kMira, "MR 1"), "4");

    StartAgain();
    OpenTab(kMacros);
    Tabs(1);
    m_desk->Type("no");
    m_desk->RestingPicture(m_dialog);
    Spellwick().Signal(SIGTERM);
    EXPECT_EQ(Spellwick().WaitForEnd(std::chrono::seconds(10)), 0);
    EXPECT_EQ(Stored(kGlobal, "Macro 1"), "A--1");
}

TEST_F(TabsInTheProgram, RefusedKeysSideBySide_AskOnce) {
    PrepareMage(kMira, 10);
    Prepare(kGlobal, {{"Macro 1", "---AA"}, {"Macro 2", "---xx"}, {"Macro 3", "---yy"}});
    StartBoth();
    OpenTab(kMacros);
    Tabs(5);
    // From the second key straight to the third, which is below it.
    m_desk->Click(m_dialog, {166, 176});
    AnswerBox();
    ASSERT_TRUE(WaitUntil([&] { return m_desk->Session().ActiveWindow() == m_dialog; }));
    m_desk->Type("w");
    CloseDialog();
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kGlobal, "Macro 2"), "---w");
    EXPECT_EQ(Stored(kGlobal, "Macro 3"), "---yy");
}

TEST_F(TabsInTheProgram, SaveToFile_WritesAllBlocksAndEndsWithAReport) {
    StartAtTab(kMacros);
    // The nine keys with their marks, then the button.
    Tabs(1);
    m_desk->Type("f9");
    Tabs(36);
    m_desk->Tap(XKB_KEY_space);
    AnswerBox();
    m_boxTitle = "Save Macro File as";
    AnswerBox();
    m_boxTitle = "Spellwick";
    AnswerBox();
    EXPECT_EQ(Spellwick().WaitForEnd(std::chrono::seconds(10)), 1);
    const std::string text = BytesOf(m_desk->Session().Folder() / "home" / "NewMacros.txt");
    EXPECT_TRUE(text.starts_with("F9 0 1 0\r\nCastSpell Clumsy\r\n########\r\n")) << text;
    EXPECT_EQ(std::ranges::count(text, '\n'), 3 * 96);
    // The program for Windows writes these bytes too (tests/windows/play.py).
    EXPECT_EQ(text, BytesOf(SAVED_MACROS));
    EXPECT_EQ(Stored(kGlobal, "Macro 1"), "A--{F9}") << "the data are saved all the same";
}

// The dialog starts in the client's folder, so the file name alone is enough.
TEST_F(TabsInTheProgram, LoadFromFile_FindsTheClientsFolderAndTakesItsKeys) {
    PrepareMage(kMira, 10);
    unsetenv("WINEPREFIX");
    const fs::path prefix = m_desk->Session().Folder() / "home" / ".wine";
    const fs::path folder = prefix / "drive_c" / "UO" / "Desktop";
    fs::create_directories(folder);
    fs::create_directories(prefix / "dosdevices");
    fs::create_directory_symlink("../drive_c", prefix / "dosdevices" / "c:");
    std::ofstream(prefix / "system.reg", std::ios::binary)
        << "WINE REGISTRY Version 2\n\n[Software\\\\Wow6432Node\\\\Origin Worlds Online\\\\"
           "Ultima Online\\\\1.0] 17\n\"StartExePath\"=\"C:\\\\UO\\\\uo.exe\"\n";
    std::ofstream(folder / "macros.txt", std::ios::binary)
        << "F5 1 0 0\r\nCastSpell Clumsy\r\n########\r\n"
           "H 0 1 0\r\nSay Hail\r\n########\r\n";
    StartBoth();
    OpenTab(kMacros);
    Tabs(38);
    m_desk->Tap(XKB_KEY_space);
    AnswerBox();
    m_boxTitle = "Load Macro File";
    const xcb_window_t dialog = WaitBox();
    ASSERT_NE(dialog, 0U);
    m_desk->RestingPicture(dialog);
    m_desk->Type("macros.txt");
    m_desk->Tap(XKB_KEY_Return);
    ASSERT_TRUE(m_desk->WaitGone(dialog));
    CloseDialog();
    EXPECT_EQ(Stored(kGlobal, "Macro 1"), "-C-{F5}");
    EXPECT_EQ(Stored(kGlobal, "Macro 2"), "A--2");
    EXPECT_EQ(CloseSpellwick(), 0);
}

}  // namespace
}  // namespace spellwick::testing_support
