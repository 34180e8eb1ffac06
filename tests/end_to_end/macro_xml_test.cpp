// A macros.xml that the real program loads and saves, through its own file dialogs.
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "tests/end_to_end/settings_desk.h"
#include "tests/support/file_bytes.h"

namespace spellwick::testing_support {
namespace {

namespace fs = std::filesystem;

std::string MacrosXml(const std::string& key) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n<macros>\r\n"
           "\t<!-- mine -->\r\n"
           "\t<macro name=\"Cl\" key=\"" +
           key +
           "\" hue=\"5\" mousebutton=\"0\" wheelscroll=\"False\" wheelup=\"False\" "
           "alt=\"True\" ctrl=\"False\" shift=\"False\">\r\n\t\t<actions>\r\n"
           "\t\t\t<action code=\"15\" subcode=\"62\" submenutype=\"1\" />\r\n"
           "\t\t</actions>\r\n\t</macro>\r\n</macros>\r\n";
}

class MacroXmlInTheProgram : public SettingsInTheProgram {
  protected:
    enum Button { kSave = 37, kLoad = 38 };  // steps of Tab from the first control of the tab

    void StartAtMacros(const std::string& key) {
        PrepareMage(kMira, 10);
        StartBoth();
        m_file = m_desk->Session().Folder() / "home" / "macros.xml";
        std::ofstream(m_file, std::ios::binary) << MacrosXml(key);
        OpenTab(kMacros);
    }
    // Presses a button, passes its notice and names the file in the dialog.
    void Choose(Button button, const char* title) {
        Tabs(button);
        m_desk->Tap(XKB_KEY_space);
        AnswerBox();
        m_boxTitle = title;
        const xcb_window_t dialog = WaitBox();
        ASSERT_NE(dialog, 0U);
        m_desk->RestingPicture(dialog);
        m_desk->Hold(XKB_KEY_Control_L, true);
        m_desk->Tap(XKB_KEY_a);
        m_desk->Hold(XKB_KEY_Control_L, false);
        m_desk->Type("macros.xml");
        m_desk->Tap(XKB_KEY_Return);
        ASSERT_TRUE(m_desk->WaitGone(dialog));
        m_boxTitle = "Spellwick";
    }

    fs::path m_file;
};

TEST_F(MacroXmlInTheProgram, Load_TakesTheKeysAndSaysSo) {
    StartAtMacros("1073741886");
    Choose(kLoad, "Load Macro File");
    AnswerBox();
    CloseDialog();
    EXPECT_EQ(Stored(kGlobal, "Macro 1"), "A--{F5}");
    EXPECT_EQ(Stored(kGlobal, "Macro 2"), "A--2");
    EXPECT_EQ(BytesOf(m_file), MacrosXml("1073741886"));
    EXPECT_EQ(CloseSpellwick(), 0);
}

// The character of the practice game is logged in, so a question comes first.
TEST_F(MacroXmlInTheProgram, Save_AsksAndPutsTheKeysIn_AndTheProgramGoesOn) {
    StartAtMacros("122");
    Choose(kSave, "Save Macro File as");
    AnswerBox();
    AnswerBox();
    const std::string saved = BytesOf(m_file);
    const std::string replaced = MacrosXml("49");
    const std::string upToTheEnd = replaced.substr(0, replaced.rfind("\r\n</macros>"));
    EXPECT_TRUE(saved.starts_with(upToTheEnd + "\r\n\t<macro name=\"Create Food\" key=\"50\""))
        << saved.substr(0, 800);
    EXPECT_TRUE(saved.ends_with("\t</macro>\r\n</macros>\r\n"));
    EXPECT_EQ(BytesOf(m_file.string() + ".bak"), MacrosXml("122"));
    CloseDialog();
    EXPECT_EQ(CloseSpellwick(), 0);
}

TEST_F(MacroXmlInTheProgram, Save_TheQuestionAnsweredWithNo_LeavesTheFile) {
    StartAtMacros("122");
    Choose(kSave, "Save Macro File as");
    const xcb_window_t question = WaitBox();
    ASSERT_NE(question, 0U);
    m_desk->RestingPicture(question);
    m_desk->Tap(XKB_KEY_Escape);
    ASSERT_TRUE(m_desk->WaitGone(question));
    CloseDialog();
    EXPECT_EQ(BytesOf(m_file), MacrosXml("122"));
    EXPECT_FALSE(fs::exists(m_file.string() + ".bak"));
    EXPECT_EQ(CloseSpellwick(), 0);
}

}  // namespace
}  // namespace spellwick::testing_support
