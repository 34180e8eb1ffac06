// Loading a macros.xml with the button of the macro tab, and the hint behind a classic client's
// text.
#include "store/macro_code.h"
#include "tests/settings_dialog/macro_files_fixture.h"
#include "widgets/hint.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr const char* kLightning =
    "\t<macro name=\"Lightning\" key=\"54\" mousebutton=\"0\" wheelscroll=\"False\" "
    "wheelup=\"False\" alt=\"True\" ctrl=\"False\" shift=\"True\">\n\t\t<actions>\n"
    "\t\t\t<action code=\"15\" subcode=\"91\" submenutype=\"1\" />\n"
    "\t\t</actions>\n\t</macro>\n";
constexpr const char* kMeditation =
    "\t<macro name=\"Med\" key=\"1073741889\" alt=\"False\" ctrl=\"True\" shift=\"False\">"
    "<actions><action code=\"13\" subcode=\"47\"/></actions></macro>\n";

std::string MacrosXml(const std::string& macros) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\n<macros>\n" + macros +
           "</macros>";
}

class MacrosTabXmlTest : public MacroFilesFixture {
  protected:
    void SetUp() override { OpenTab(); }
    std::vector<Box> LoadBytes(const std::string& bytes, const char* name = "macros.xml") {
        return LoadFile(Write(name, bytes));
    }
    std::vector<std::string> HintTexts() {
        std::vector<std::string> texts;
        for (const Hint* hint : Form().findChildren<Hint*>()) {
            EXPECT_TRUE(hint->isVisible());
            texts.push_back(hint->text().toStdString());
        }
        return texts;
    }
};

TEST_F(MacrosTabXmlTest, Load_TakesKeysAndSaysSoInABox) {
    const std::vector<Box> boxes =
        LoadBytes(MacrosXml(std::string(kLightning) + kMeditation +
                            "<macro key=\"0\"><actions><action code=\"15\" subcode=\"62\"/>"
                            "</actions></macro>"));
    EXPECT_EQ(MacroOf(m_state, 30), (Macro{.alt = true, .shift = true, .key = "6"}));
    EXPECT_EQ(MacroOf(m_state, -1), (Macro{.ctrl = true, .key = "{F8}"}));
    EXPECT_EQ(Text("TextMacro", 9), "{F8}") << "the page is shown again";
    EXPECT_EQ(m_state.MacroKey(1), "1");
    EXPECT_THAT(boxes, ElementsAre(Box{
                           .text = "The keys of 1 spell and Meditation were loaded from "
                                   "macros.xml. These macros were left:\n\u2022 No key: Clumsy.",
                           .icon = BoxIcon::kInformation}));
    EXPECT_THAT(HintTexts(), IsEmpty());
    Form().close();
    EXPECT_EQ(Saved("Settings", "Macro 30"), "A-S6");
}

TEST_F(MacrosTabXmlTest, TheKindOfAFile_IsToldByItsContent) {
    EXPECT_THAT(LoadBytes(MacrosXml(kLightning), "macros.txt"), SizeIs(1));
    EXPECT_EQ(m_state.MacroAlt(30), "%");
    EXPECT_THAT(LoadBytes("F5 0 0 0\r\nCastSpell Clumsy\r\n", "macros.xml"), IsEmpty());
    EXPECT_EQ(m_state.MacroKey(1), "{F5}");
}

TEST_F(MacrosTabXmlTest, HostileFiles_AreRefusedAndChangeNothing) {
    const fs::path huge = Write("huge.xml", "<?xml version='1.0'?><macros>");
    fs::resize_file(huge, std::uintmax_t{1} << 30U);
    const struct {
        const char* name;
        fs::path file;
        const char* sentence;
    } rows[] = {
        {"a gigabyte", huge, "huge.xml was not loaded. It is larger than any macro file."},
        {"cut", Write("cut.xml", MacrosXml(kLightning).substr(0, 200)),
         "cut.xml was not loaded. It is damaged in line "},
        {"bomb", Write("bomb.xml", "<!DOCTYPE a [<!ENTITY b 'c'>]><macros>&b;</macros>"),
         "bomb.xml was not loaded. It declares"},
        {"UTF-16", Write("wide.xml", std::string("\xff\xfe<\0m\0", 6)),
         "wide.xml was not loaded. It is not written in UTF-8."},
        {"no macros", Write("page.xml", "<html/>"), "page.xml was not loaded. It is no macro file"},
    };
    const auto before = m_state.MacroKey;
    for (const auto& row : rows) {
        const std::vector<Box> boxes = LoadFile(row.file);
        ASSERT_THAT(boxes, SizeIs(1)) << row.name;
        EXPECT_THAT(boxes.front().text, StartsWith(row.sentence));
        EXPECT_EQ(boxes.front().icon, BoxIcon::kExclamation);
        EXPECT_EQ(m_state.MacroKey, before) << row.name;
    }
}

TEST_F(MacrosTabXmlTest, ManyMacrosThatAreLeft_MakeNoTallBox) {
    std::string macros;
    for (int subcode = 62; subcode <= 152; ++subcode) {
        for (const char* key : {"9", "0"}) {
            macros += std::string("<macro key=\"") + key +
                      "\"><actions><action code=\"15\" subcode=\"" + std::to_string(subcode) +
                      "\"/></actions></macro>\n";
        }
    }
    const std::vector<Box> boxes = LoadBytes(MacrosXml(macros));
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_THAT(boxes.front().text, HasSubstr(" and 81 more."));
    EXPECT_LE(std::ranges::count(boxes.front().text, '\n'), 6);
    EXPECT_LT(boxes.front().text.size(), 1500U);
}

TEST_F(MacrosTabXmlTest, ClassicText_ItsSummaryIsAHintBesideTheDialog) {
    QWidget* const focus = Form().Macros().CommandMacroRead;
    focus->setFocus();
    EXPECT_THAT(LoadBytes("F5 0 0 0\r\nCastSpell Clumsy\r\n########\r\n"
                          "F6 0 0 0\r\n+CastSpell Flame Strike\r\n########\r\n"
                          "F7 0 0 0\r\nCastSpell heal\r\n",
                          "macros.txt"),
                IsEmpty());
    EXPECT_EQ(m_state.MacroKey(51), "{F6}");
    EXPECT_THAT(HintTexts(),
                ElementsAre("The keys of 2 spells were loaded from macros.txt. These macros were "
                            "left:\n\u2022 No spell has this name: heal."));
    const Hint* hint = Form().findChild<Hint*>();
    EXPECT_EQ(hint->objectName(), "Hint");
    EXPECT_EQ(hint->parentWidget(), &Form());
    EXPECT_EQ(QApplication::focusWidget(), focus);
    EXPECT_FALSE(hint->isActiveWindow());
}

TEST_F(MacrosTabXmlTest, WhatIsNoFile_IsToldInAHint) {
    EXPECT_THAT(LoadFile(m_folder.path().toStdString()), IsEmpty());
    EXPECT_THAT(LoadFile(File("missing.xml")), IsEmpty());
    EXPECT_THAT(HintTexts(), testing::Contains("The file missing.xml cannot be read."));
    EXPECT_THAT(HintTexts(), SizeIs(2));
}

TEST_F(MacrosTabXmlTest, TheDialogs_StartInTheCharactersFolderWhereItIsKnown) {
    m_companion.characterFolder = "/game/Data/Profiles/me/Atlantic/Mira";
    m_installation.keys["Software\\Origin Worlds Online\\Ultima Online\\1.0"]["StartExePath"] =
        "C:\\Game\\uo.exe";
    for (const char* button : {"CommandMacroRead", "CommandMacroWrite"}) {
        Click(button);
        TakeBoxes();
    }
    m_companion.characterFolder.clear();
    Click("CommandMacroRead");
    TakeBoxes();
    ASSERT_THAT(m_dialogs.opens, SizeIs(2));
    EXPECT_EQ(m_dialogs.opens[0].folder, "/game/Data/Profiles/me/Atlantic/Mira");
    EXPECT_EQ(m_dialogs.saves[0].folder, "/game/Data/Profiles/me/Atlantic/Mira");
    EXPECT_EQ(m_dialogs.opens[1].folder, "/drives/C/Game/Desktop");
    EXPECT_TRUE(m_dialogs.opens[0].startsWithOther);
    EXPECT_TRUE(m_dialogs.saves[0].startsWithOther);
    EXPECT_FALSE(m_dialogs.opens[1].startsWithOther);
}

TEST_F(MacrosTabXmlTest, ACancelBeforeAnyFile_SaysNothing) {
    Click("CommandMacroRead");
    EXPECT_THAT(TakeBoxes(), ElementsAre(ReadNotice()));
    EXPECT_THAT(HintTexts(), IsEmpty());
    Click("CommandMacroWrite");
    EXPECT_THAT(TakeBoxes(), ElementsAre(WriteNotice()));
    Click("CommandMacroRead");
    EXPECT_THAT(TakeBoxes(), ElementsAre(ReadNotice()));
    EXPECT_THAT(HintTexts(), IsEmpty());
}

}  // namespace
}  // namespace spellwick
