// Saving into a macros.xml with the button of the macro tab.
#include <sys/stat.h>

#include "tests/settings_dialog/macro_files_fixture.h"
#include "tests/support/file_bytes.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class MacrosTabXmlSaveTest : public MacroFilesFixture {
  protected:
    void SetUp() override { OpenTab(); }
    // Only the first spell has a key: Alt+1.
    void KeepFirstSpell() {
        for (i32 number = 2; number <= kLastMacro; ++number) {
            m_state.MacroKey(number) = "AA";
        }
    }
};

// Line ends of Windows, a mark of UTF-8, a comment, unknown attributes and other macros.
std::string ForeignFile(const std::string& key) {
    return "\xef\xbb\xbf<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<macros a='b'>\r\n"
           "  <!-- m\u00edne <macro> -->\r\n"
           "  <macro name='&#x43;lumsy'\thue=\"5\" key=\"" +
           key +
           "\" alt=\"True\" ><actions><action code=\"15\" subcode=\"62\" x='y'/></actions>"
           "</macro>\r\n\r\n"
           "  <macro name=\"Door\" key=\"32\"><actions/></macro>\r\n"
           "  <other/>text\r\n</macros>\r\n<!-- end -->\r\n";
}

TEST_F(MacrosTabXmlSaveTest, Save_ReplacesTheKey_AndKeepsEveryOtherByte) {
    KeepFirstSpell();
    const fs::path file = Write("macros.xml", ForeignFile("120"));
    const std::vector<Box> boxes = SaveTo(file);
    EXPECT_EQ(BytesOf(file), ForeignFile("49"));
    EXPECT_EQ(BytesOf(File("macros.xml.bak")), ForeignFile("120"));
    EXPECT_FALSE(fs::exists(File("macros.xml.spellwick-new")));
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_EQ(boxes.front().icon, BoxIcon::kInformation);
    EXPECT_THAT(boxes.front().text,
                StartsWith("The keys of 1 spell were saved to macros.xml: 1 changed, 0 new."));
    EXPECT_THAT(boxes.front().text, HasSubstr("The file as it was is kept as macros.xml.bak."));
}

TEST_F(MacrosTabXmlSaveTest, Save_AllSpells_ComeBackWithALoad) {
    const fs::path file = Write("macros.xml", ForeignFile("120"));
    m_state.MacroKey(-1) = "M";
    SaveTo(file);
    const auto keys = m_state.MacroKey;
    const auto marks = m_state.MacroAlt;
    for (i32 number = -1; number <= kLastMacro; ++number) {
        m_state.MacroKey(number) = "z";
        m_state.MacroAlt(number) = "";
    }
    LoadFile(file);
    i32 compared = 0;
    for (i32 number = 1; number <= kLastMacro; ++number) {
        if (keys(number).size() == 1) {
            EXPECT_EQ(QString::fromStdString(keys(number)).toLower().toStdString(),
                      m_state.MacroKey(number));
            EXPECT_EQ(marks(number), m_state.MacroAlt(number)) << number;
            ++compared;
        }
    }
    EXPECT_EQ(compared, 90) << "all but Exorcism, which has no key";
    EXPECT_EQ(m_state.MacroKey(-1), "m");
    EXPECT_EQ(m_state.MacroShift(-1), "+");
    m_state.MacroKey(96) = "AA";
    const std::string once = BytesOf(file);
    const std::vector<Box> boxes = SaveTo(file);
    EXPECT_EQ(BytesOf(file), once) << "a second save changes nothing";
    EXPECT_EQ(BytesOf(File("macros.xml.bak")), ForeignFile("120"));
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_THAT(boxes.front().text, StartsWith("Nothing had to be changed in macros.xml."));
}

TEST_F(MacrosTabXmlSaveTest, Save_ToANewXml_MakesAFileOfOurMacros) {
    const std::vector<Box> boxes = SaveTo(File("Macros.XML"));
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_THAT(boxes.front().text, StartsWith("The keys of 90 spells were saved to Macros.XML: 0 "
                                               "changed, 90 new."));
    EXPECT_THAT(boxes.front().text, HasSubstr("The file is new and holds these macros alone."));
    EXPECT_THAT(BytesOf(File("Macros.XML")),
                StartsWith("<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\n"
                           "<macros>\n\t<macro name=\"Clumsy\" key=\"49\" mousebutton=\"0\" "
                           "wheelscroll=\"False\" wheelup=\"False\" alt=\"True\" ctrl=\"False\" "
                           "shift=\"False\">\n\t\t<actions>\n\t\t\t<action code=\"15\" "
                           "subcode=\"62\" submenutype=\"1\" />\n"));
    EXPECT_FALSE(fs::exists(File("Macros.XML.bak")));
    EXPECT_THAT(TakeFailures(), IsEmpty()) << "the program goes on";
}

TEST_F(MacrosTabXmlSaveTest, Save_ToAnXmlOfAnotherName_GoesByItsContent) {
    KeepFirstSpell();
    const fs::path file = Write("mine.txt", ForeignFile("120"));
    SaveTo(file);
    EXPECT_EQ(BytesOf(file), ForeignFile("49"));
    EXPECT_EQ(BytesOf(File("mine.txt.bak")), ForeignFile("120"));
}

TEST_F(MacrosTabXmlSaveTest, Save_WhatCannotBeTaken_IsRefusedAndStaysAsItIs) {
    const fs::path pipe = File("pipe.xml");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    fs::create_directory(File("folder.xml"));
    const struct {
        fs::path file;
        const char* sentence;
    } rows[] = {
        {Write("text.xml", "F5 0 0 0\r\nCastSpell Clumsy\r\n"),
         "text.xml was not saved. It is no macro file of this kind."},
        {Write("empty.xml", ""), "empty.xml was not saved. It is no macro file of this kind."},
        {Write("cut.xml", ForeignFile("120").substr(0, 200)),
         "cut.xml was not saved. It is damaged in line "},
        {Write("page.xml", "<html></html>"), "page.xml was not saved. It is no macro file"},
        {pipe, "pipe.xml was not saved. It cannot be read."},
        {File("folder.xml"), "folder.xml was not saved. It cannot be read."},
        {File("missing") / "macros.xml", "macros.xml was not saved. It cannot be written."},
    };
    for (const auto& row : rows) {
        const std::string before = fs::is_regular_file(row.file) ? BytesOf(row.file) : "";
        const std::vector<Box> boxes = SaveTo(row.file);
        ASSERT_THAT(boxes, SizeIs(1)) << row.file;
        EXPECT_THAT(boxes.front().text, StartsWith(row.sentence));
        EXPECT_EQ(boxes.front().icon, BoxIcon::kExclamation);
        if (fs::is_regular_file(row.file)) {
            EXPECT_EQ(BytesOf(row.file), before) << row.file;
        }
        EXPECT_FALSE(fs::exists(row.file.string() + ".bak")) << row.file;
        EXPECT_THAT(TakeFailures(), IsEmpty());
    }
}

TEST_F(MacrosTabXmlSaveTest, Save_WithoutRoomForTheCopy_ChangesNothing) {
    const fs::path file = Write("macros.xml", ForeignFile("120"));
    fs::create_directory(File("macros.xml.bak"));
    const std::vector<Box> boxes = SaveTo(file);
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_EQ(boxes.front().text,
              "macros.xml was not saved. The copy macros.xml.bak cannot be written beside it.");
    EXPECT_EQ(BytesOf(file), ForeignFile("120"));
}

TEST_F(MacrosTabXmlSaveTest, Save_WhileTheCharacterIsLoggedIn_Asks) {
    KeepFirstSpell();
    m_companion.inGame = "Mira Talon";
    const Box question{
        .text =
            "Mira Talon is logged in. At the logout of Mira Talon the game writes the "
            "macros.xml of Mira Talon anew, and the keys that are saved to it now are lost "
            "then.\nSave to macros.xml all the same?",
        .icon = BoxIcon::kQuestion,
        .buttons = BoxButtons::kYesNo};
    const fs::path file = Write("macros.xml", ForeignFile("120"));
    EXPECT_THAT(SaveTo(file), ElementsAre(question));
    EXPECT_EQ(BytesOf(file), ForeignFile("120"));
    EXPECT_FALSE(fs::exists(File("macros.xml.bak")));
    m_boxes.answers = {BoxAnswer::kOk, BoxAnswer::kYes};
    EXPECT_THAT(SaveTo(file), SizeIs(2));
    EXPECT_EQ(BytesOf(file), ForeignFile("49"));
}

TEST_F(MacrosTabXmlSaveTest, Save_WhatTheGameWroteDuringTheQuestion_IsKept) {
    KeepFirstSpell();
    m_companion.inGame = "Mira";
    const fs::path file = Write("macros.xml", ForeignFile("120"));
    const std::string newer = ForeignFile("121") + "<!-- newer -->";
    m_boxes.answers = {BoxAnswer::kOk, BoxAnswer::kYes};
    m_boxes.whileStanding = [&] { m_boxes.whileStanding = [&] { Write("macros.xml", newer); }; };
    SaveTo(file);
    EXPECT_EQ(BytesOf(file), ForeignFile("49") + "<!-- newer -->");
    EXPECT_EQ(BytesOf(File("macros.xml.bak")), newer);
}

TEST_F(MacrosTabXmlSaveTest, Save_ThroughALink_ReplacesTheFileBehindIt) {
    KeepFirstSpell();
    fs::create_directory(File("real"));
    const fs::path file = Write("real/macros.xml", ForeignFile("120"));
    fs::create_symlink(file, File("macros.xml"));
    SaveTo(File("macros.xml"));
    EXPECT_TRUE(fs::is_symlink(File("macros.xml")));
    EXPECT_EQ(BytesOf(file), ForeignFile("49"));
    EXPECT_EQ(BytesOf(File("macros.xml.bak")), ForeignFile("120"));
}

}  // namespace
}  // namespace spellwick
