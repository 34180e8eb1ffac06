// Load and save of the macros of a macros.xml, apart from the reading of XML.
#include "store/client_macros.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/store/macro_table_tools.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

constexpr const char* kCast1 = "15/62";  // of macro 1, "Spell 0"
constexpr const char* kCast2 = "15/63";  // of macro 2, "Spell 1"
constexpr const char* kMeditate = "13/47";

XmlAttributes Action(const std::string& pair) {
    const std::size_t bar = pair.find('/');
    return {{"code", pair.substr(0, bar)}, {"subcode", pair.substr(bar + 1)}};
}

// A macros.xml that grows by whole tags, with the places that a reader would tell.
struct File {
    std::string bytes = "<macros>\n";
    MacroXml xml{.macros = {}, .rootTagEnd = 8, .endTagBegin = 0};

    File& Add(const XmlAttributes& attributes, const std::vector<std::string>& actions,
              const char* between = " ") {
        XmlMacro macro;
        macro.attributes = attributes;
        bytes += '\t';
        macro.tagBegin = bytes.size();
        bytes += "<macro";
        for (const auto& [name, value] : attributes) {
            bytes.append(between).append(name).append("=\"").append(value).append("\"");
        }
        bytes += ">";
        macro.tagEnd = bytes.size();
        for (const std::string& action : actions) {
            macro.actions.push_back(Action(action));
            bytes.append("<action ").append(action).append("/>");
        }
        bytes += "</macro>\n";
        xml.macros.push_back(macro);
        return *this;
    }
    File& Key(const char* key, const std::string& action) { return Add({{"key", key}}, {action}); }
    File& End() {
        xml.endTagBegin = bytes.size();
        bytes += "</macros>";
        return *this;
    }
};

class ClientMacrosTest : public testing::Test {
  protected:
    MacroLoad Load(const File& file) { return LoadClientMacros(file.xml, m_state.Spells, m_state); }
    SavedMacros Save(const File& file) {
        return SaveClientMacros(file.bytes, file.xml, m_state.Spells, m_state);
    }
    // Only these macros have a key.
    void KeysOnly(const std::vector<std::pair<i32, Macro>>& macros) {
        for (i32 number = kMeditationMacro; number <= kLastMacro; ++number) {
            SetMacro(m_state, number, {});
        }
        for (const auto& [number, macro] : macros) {
            SetMacro(m_state, number, macro);
        }
    }
    SharedState m_state = MacroState();
};

TEST_F(ClientMacrosTest, Load_TakesKeyAndModifiers) {
    const MacroLoad load = Load(File()
                                    .Add({{"name", "any"},
                                          {"key", "54"},
                                          {"mousebutton", "0"},
                                          {"wheelscroll", "False"},
                                          {"alt", "True"},
                                          {"ctrl", "False"},
                                          {"shift", "true"}},
                                         {kCast1})
                                    .Key("1073741886", kCast2)
                                    .Key("109", kMeditate)
                                    .End());
    EXPECT_THAT(load.taken, UnorderedElementsAre(1, 2, -1));
    EXPECT_THAT(load.left, IsEmpty());
    EXPECT_EQ(MacroOf(m_state, 1), (Macro{.alt = true, .shift = true, .key = "6"}));
    EXPECT_EQ(MacroOf(m_state, 2), (Macro{.key = "{F5}"}));
    EXPECT_EQ(MacroOf(m_state, -1), (Macro{.key = "m"}));
    EXPECT_EQ(MacroOf(m_state, 3), (Macro{.key = "-"}));
}

TEST_F(ClientMacrosTest, Load_WhatIsLeft_KeepsItsKeyAndIsTold) {
    const struct {
        const char* name;
        XmlAttributes attributes;
        std::vector<std::string> actions;
        LeftMacro left;
    } rows[] = {
        {"no key", {{"key", "0"}}, {kCast1}, {LeftReason::kNoKey, "Spell 0"}},
        {"no attribute", {}, {kCast1}, {LeftReason::kNoKey, "Spell 0"}},
        {"mouse", {{"key", "0"}, {"mousebutton", "4"}}, {kCast1}, {LeftReason::kMouse, "Spell 0"}},
        {"wheel",
         {{"key", "0"}, {"wheelscroll", "True"}},
         {kCast1},
         {LeftReason::kMouse, "Spell 0"}},
        {"key name", {{"key", "9"}}, {kCast1}, {LeftReason::kOtherKey, "Spell 0 (Tab)"}},
        {"no number", {{"key", "x"}}, {kCast1}, {LeftReason::kOtherKey, "Spell 0 (0)"}},
        {"too large", {{"key", "99999999999"}}, {kCast1}, {LeftReason::kOtherKey, "Spell 0 (0)"}},
        {"sign of the notation", {{"key", "43"}}, {kCast1}, {LeftReason::kOtherKey, "Spell 0 (+)"}},
        {"two actions", {{"key", "54"}}, {kCast1, "1/0"}, {LeftReason::kMoreActions, "Spell 0"}},
        {"Meditation", {{"key", "9"}}, {kMeditate}, {LeftReason::kOtherKey, "Meditation (Tab)"}},
    };
    for (const auto& row : rows) {
        const MacroLoad load = Load(File().Add(row.attributes, row.actions).End());
        EXPECT_THAT(load.taken, IsEmpty()) << row.name;
        EXPECT_THAT(load.left, ElementsAre(row.left)) << row.name;
        EXPECT_EQ(MacroOf(m_state, 1), (Macro{.key = "-"})) << row.name;
        EXPECT_EQ(MacroOf(m_state, -1), (Macro{.key = "-"})) << row.name;
    }
}

TEST_F(ClientMacrosTest, Load_AMacroThatDoesMore_IsToldOnlyOfASpellWithoutItsOwn) {
    const MacroLoad load =
        Load(File().Add({{"key", "54"}}, {kCast1, "1/0"}).Key("9", kCast1).End());
    EXPECT_THAT(load.left, ElementsAre(LeftMacro{LeftReason::kOtherKey, "Spell 0 (Tab)"}));
}

TEST_F(ClientMacrosTest, Load_OtherMacros_AreNotTold) {
    const MacroLoad load = Load(File()
                                    .Key("54", "1/0")
                                    .Key("54", "15/200")
                                    .Key("54", "13/1")
                                    .Add({{"key", "54"}}, {})
                                    .Add({{"key", "54"}}, {"1/2", "3/4"})
                                    .End());
    EXPECT_THAT(load.taken, IsEmpty());
    EXPECT_THAT(load.left, IsEmpty());
}

TEST_F(ClientMacrosTest, Load_TwoMacrosForASpell_TheFirstThatCanBePressedCounts) {
    const MacroLoad load = Load(File().Key("97", kCast1).Key("98", kCast1).End());
    EXPECT_EQ(MacroOf(m_state, 1).key, "a");
    EXPECT_THAT(load.left, ElementsAre(LeftMacro{LeftReason::kSecond, "Spell 0"}));
    Load(File().Key("0", kCast2).Key("98", kCast2).Key("99", kCast2).End());
    EXPECT_EQ(MacroOf(m_state, 2).key, "b");
}

TEST_F(ClientMacrosTest, Load_RowWithoutASpell_IsNoneOfOurs) {
    m_state.Spells(0).Name = "";
    const MacroLoad load = Load(File().Key("97", kCast1).End());
    EXPECT_THAT(load.taken, IsEmpty());
    EXPECT_EQ(MacroOf(m_state, 1).key, "-");
    m_state.Spells.Clear();
    EXPECT_THAT(Load(File().Key("97", kCast2).End()).taken, IsEmpty()) << "a table without rows";
}

TEST_F(ClientMacrosTest, Save_ChangesOnlyTheValuesThatDiffer) {
    KeysOnly({{1, {.ctrl = true, .key = "{F5}"}}});
    const File file = File()
                          .Add({{"hue", "7"},
                                {"key", "54"},
                                {"mousebutton", "0"},
                                {"alt", "True"},
                                {"ctrl", "False"},
                                {"shift", "False"},
                                {"graphic", "&quot;9"}},
                               {kCast1}, "\t ")
                          .Key("100", "1/0")
                          .End();
    const SavedMacros saved = Save(file);
    EXPECT_EQ(saved.bytes,
              "<macros>\n\t<macro\t hue=\"7\"\t key=\"1073741886\"\t mousebutton=\"0\"\t "
              "alt=\"False\"\t ctrl=\"True\"\t shift=\"False\"\t graphic=\"&quot;9\">"
              "<action 15/62/></macro>\n"
              "\t<macro key=\"100\"><action 1/0/></macro>\n</macros>");
    EXPECT_THAT(saved.save.replaced, ElementsAre(1));
    EXPECT_THAT(saved.save.added, IsEmpty());
}

TEST_F(ClientMacrosTest, Save_MissingAttributes_AreAddedWhereTheyMatter) {
    KeysOnly({{1, {.alt = true, .key = "x"}}});
    File file;
    file.Add({{"name", "a"}}, {kCast1}).End();
    EXPECT_THAT(Save(file).bytes, HasSubstr("<macro name=\"a\" key=\"120\" alt=\"True\">"));
}

TEST_F(ClientMacrosTest, Save_ARightMacro_IsNotTouched) {
    KeysOnly({{1, {.alt = true, .key = "Q"}}});
    const File file = File().Add({{"key", "113"}, {"alt", "true"}}, {kCast1}).End();
    const SavedMacros saved = Save(file);
    EXPECT_EQ(saved.bytes, file.bytes);
    EXPECT_THAT(saved.save.unchanged, ElementsAre(1));
}

TEST_F(ClientMacrosTest, Save_ASpellWithoutAMacro_GetsOneBehindTheOthers) {
    KeysOnly({{30, {.alt = true, .shift = true, .key = "6"}}});
    m_state.Spells(29).Name = "Light & \"ning\"";
    const SavedMacros saved = Save(File().Key("100", "1/0").End());
    EXPECT_EQ(saved.bytes,
              "<macros>\n\t<macro key=\"100\"><action 1/0/></macro>\n"
              "\t<macro name=\"Light &amp; &quot;ning&quot;\" key=\"54\" mousebutton=\"0\" "
              "wheelscroll=\"False\" wheelup=\"False\" alt=\"True\" ctrl=\"False\" "
              "shift=\"True\">\n"
              "\t\t<actions>\n\t\t\t<action code=\"15\" subcode=\"91\" submenutype=\"1\" />\n"
              "\t\t</actions>\n\t</macro>\n</macros>");
    EXPECT_THAT(saved.save.added, ElementsAre(30));
}

TEST_F(ClientMacrosTest, Save_NewMacros_TakeLineEndsAndIndentOfTheFile) {
    KeysOnly({{1, {.key = "x"}}});
    std::string bytes = "<macros>\r\n  <macro key=\"100\"/>\r\n</macros>\r\n";
    const MacroXml xml{
        .macros = {{12, 30, {{"key", "100"}}, {}}}, .rootTagEnd = 8, .endTagBegin = 32};
    const std::string saved = SaveClientMacros(bytes, xml, m_state.Spells, m_state).bytes;
    EXPECT_THAT(saved, HasSubstr("/>\r\n  <macro name=\"Spell 0\""));
    EXPECT_THAT(saved, HasSubstr("\r\n    <actions>\r\n      <action "));
    EXPECT_THAT(saved, EndsWith("</macro>\r\n</macros>\r\n"));
}

TEST_F(ClientMacrosTest, Save_FilesWithoutMacros) {
    KeysOnly({{1, {.key = "x"}}});
    const struct {
        const char* bytes;
        std::size_t endTag;
        const char* begin;
        const char* end;
    } rows[] = {
        {"<macros/>", 9, "<macros>\n\t<macro ", "</macro>\n</macros>"},
        {"<macros />\n", 10, "<macros >\n\t<macro ", "</macro>\n</macros>\n"},
        {"<macros></macros>", 8, "<macros>\n\t<macro ", "</macro>\n</macros>"},
        {"<macros>\n</macros>", 9, "<macros>\n\t<macro ", "</macro>\n</macros>"},
    };
    for (const auto& row : rows) {
        const std::string bytes = row.bytes;
        const MacroXml xml{
            .macros = {}, .rootTagEnd = bytes.find('>') + 1, .endTagBegin = row.endTag};
        const std::string saved = SaveClientMacros(bytes, xml, m_state.Spells, m_state).bytes;
        EXPECT_TRUE(saved.starts_with(row.begin)) << saved;
        EXPECT_THAT(saved, EndsWith(row.end));
    }
}

TEST_F(ClientMacrosTest, Save_ANameThatIsTaken_GetsANumber) {
    KeysOnly({{1, {.key = "x"}}});
    const SavedMacros saved = Save(
        File().Add({{"name", "Spell 0"}}, {"1/0"}).Add({{"name", "Spell 0 2"}}, {"1/0"}).End());
    EXPECT_THAT(saved.bytes, HasSubstr("<macro name=\"Spell 0 3\" key=\"120\""));
}

TEST_F(ClientMacrosTest, Save_WhatHasNoKeyHere_StaysAsItIs) {
    KeysOnly({{1, {.key = "AA"}}, {2, {.key = "+"}}, {3, {.key = " "}}});
    const File file = File().Key("97", kCast1).Key("98", kCast2).Key("99", kMeditate).End();
    const SavedMacros saved = Save(file);
    EXPECT_EQ(saved.bytes, file.bytes);
    EXPECT_THAT(saved.save.left, testing::Contains(LeftMacro{LeftReason::kNoKey, "Spell 0"}));
    EXPECT_THAT(saved.save.left,
                testing::Contains(LeftMacro{LeftReason::kOtherKey, "Spell 1 (+)"}));
    EXPECT_THAT(saved.save.left, testing::Contains(LeftMacro{LeftReason::kNoKey, "Spell 2"}));
}

TEST_F(ClientMacrosTest, Save_AMouseButton_GivesWayAndIsTold) {
    KeysOnly({{1, {.key = "x"}}, {2, {.key = "y"}}});
    const File file =
        File()
            .Add({{"key", "0"}, {"mousebutton", "4"}, {"wheelscroll", "True"}}, {kCast1})
            .Add({{"key", "9"}}, {kCast2})
            .End();
    const SavedMacros saved = Save(file);
    EXPECT_THAT(saved.bytes,
                HasSubstr("<macro key=\"120\" mousebutton=\"0\" wheelscroll=\"False\">"));
    EXPECT_THAT(saved.save.moved, ElementsAre("Spell 0", "Spell 1"));
}

TEST_F(ClientMacrosTest, Save_AKeyOfAnotherMacro_IsTold) {
    KeysOnly({{1, {.alt = true, .key = "x"}}, {2, {.key = "y"}}});
    const SavedMacros saved = Save(File()
                                       .Add({{"key", "120"}, {"alt", "True"}}, {"1/0"})
                                       .Add({{"key", "121"}, {"alt", "True"}}, {"1/0"})
                                       .End());
    EXPECT_THAT(saved.save.shared, ElementsAre("Spell 0"));
}

TEST_F(ClientMacrosTest, Save_OfTwoMacrosForASpell_ChangesTheOneThatIsLoaded) {
    KeysOnly({{1, {.key = "x"}}});
    const SavedMacros saved =
        Save(File().Key("0", kCast1).Key("98", kCast1).Key("99", kCast1).End());
    EXPECT_THAT(saved.bytes, HasSubstr("\"0\""));
    EXPECT_THAT(saved.bytes, HasSubstr("\"99\""));
    EXPECT_THAT(saved.bytes, Not(HasSubstr("\"98\"")));
}

TEST_F(ClientMacrosTest, Save_Meditation_ACapitalIsPressedWithShift) {
    KeysOnly({{-1, {.ctrl = true, .key = "M"}}});
    EXPECT_THAT(Save(File().End()).bytes,
                HasSubstr("<macro name=\"Meditation\" key=\"109\" mousebutton=\"0\" "
                          "wheelscroll=\"False\" wheelup=\"False\" alt=\"False\" ctrl=\"True\" "
                          "shift=\"True\">"));
    KeysOnly({{-1, {.key = " "}}});
    const SavedMacros saved = Save(File().End());
    EXPECT_THAT(saved.bytes, Not(HasSubstr("Meditation")));
}

TEST(IsXml, ToldByTheFirstBytes) {
    using namespace std::string_view_literals;
    for (const std::string_view xml :
         {"<?xml version"sv, "<macros>"sv, "<!-- -->"sv, "\xef\xbb\xbf<macros/>"sv, "\r\n\t <m"sv,
          "<!DOCTYPE"sv, "\xff\xfe<\0?\0"sv, "\xfe\xff\0<\0?"sv, "<\0?\0"sv, "\0<\0?"sv,
          "<\xc3\xa9/>"sv}) {
        EXPECT_TRUE(IsXml(xml)) << xml;
    }
    for (const std::string_view text :
         {""sv, "<"sv, "< 0 1 0\r\nCastSpell Heal\r\n"sv, "<\t"sv, "F5 0 0 0\r\n"sv, "\xff\xfe"sv,
          "q 0 0 0\r\n<macros>"sv, "\xef\xbb\xbf"sv, "   "sv}) {
        EXPECT_FALSE(IsXml(text)) << text;
    }
}

}  // namespace
}  // namespace spellwick
