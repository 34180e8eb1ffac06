// Reading a macros.xml: what stands in it and where, and what is refused.
#include "settings_dialog/macro_xml_reader.h"

#include <initializer_list>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/pace.h"

namespace spellwick {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

MacroXml Read(const std::string& bytes) {
    const auto read = ReadMacroXml(bytes);
    const auto* const refusal = std::get_if<std::string>(&read);
    EXPECT_EQ(refusal, nullptr) << *refusal;
    return refusal == nullptr ? std::get<MacroXml>(read) : MacroXml();
}

std::string Refusal(const std::string& bytes) {
    const auto read = ReadMacroXml(bytes);
    const auto* const refusal = std::get_if<std::string>(&read);
    return refusal != nullptr ? *refusal : "(taken)";
}

std::string TagOf(const std::string& bytes, const XmlMacro& macro) {
    return bytes.substr(macro.tagBegin, macro.tagEnd - macro.tagBegin);
}

TEST(MacroXmlReader, ClientsFile_AttributesActionsAndPlaces) {
    const std::string bytes =
        "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\n<macros>\n"
        "\t<macro name=\"Lightning\" key=\"54\" alt=\"True\">\n\t\t<actions>\n"
        "\t\t\t<action code=\"15\" subcode=\"91\" submenutype=\"1\" />\n"
        "\t\t</actions>\n\t</macro>\n</macros>";
    const MacroXml xml = Read(bytes);
    ASSERT_THAT(xml.macros, SizeIs(1));
    const XmlMacro& macro = xml.macros.front();
    EXPECT_EQ(macro.attributes,
              (XmlAttributes{{"name", "Lightning"}, {"key", "54"}, {"alt", "True"}}));
    ASSERT_THAT(macro.actions, SizeIs(1));
    EXPECT_EQ(macro.actions.front(),
              (XmlAttributes{{"code", "15"}, {"subcode", "91"}, {"submenutype", "1"}}));
    EXPECT_EQ(TagOf(bytes, macro), "<macro name=\"Lightning\" key=\"54\" alt=\"True\">");
    EXPECT_EQ(bytes.substr(0, xml.rootTagEnd).substr(xml.rootTagEnd - 8), "<macros>");
    EXPECT_EQ(bytes.substr(xml.endTagBegin), "</macros>");
}

std::string Joined(std::initializer_list<std::string_view> parts) {
    std::string joined;
    for (const std::string_view part : parts) {
        joined += part;
    }
    return joined;
}

TEST(MacroXmlReader, Places_AreBytes_WhateverStandsInFront) {
    const struct {
        const char* name;
        const char* before;
    } rows[] = {
        {"nothing", ""},
        {"mark of UTF-8", "\xef\xbb\xbf"},
        {"line ends of Windows", "\r\n\r\n"},
        {"line ends of old", "\r"},
        {"letters of two and three bytes", "<!-- \u00e9\u044f\u20ac -->"},
        {"letters of four bytes", "<!-- \U0001f600\U0001f600 -->"},
        {"tags in a comment", "<!-- <macro><macros> -->"},
        {"an instruction", "<?style <macro> ?>"},
    };
    for (const auto& row : rows) {
        for (const std::string end : {">", " >", "\r\n>"}) {
            const std::string text =
                std::string("t\u00e9xt \U0001f600 &amp;&#x20ac; <![CDATA[<a>]]>");
            const std::string bytes =
                Joined({row.before, "<macros>", text, "<macro n='\U0001f600>'", end, "</macro>",
                        text, "<macro\tkey = '5'/>", text, "</macros", end, "\n"});
            const MacroXml xml = Read(bytes);
            ASSERT_THAT(xml.macros, SizeIs(2)) << row.name;
            EXPECT_EQ(TagOf(bytes, xml.macros[0]), "<macro n='\U0001f600>'" + end) << row.name;
            EXPECT_EQ(TagOf(bytes, xml.macros[1]), "<macro\tkey = '5'/>") << row.name;
            EXPECT_EQ(bytes.substr(xml.endTagBegin), "</macros" + end + "\n") << row.name;
        }
    }
}

TEST(MacroXmlReader, EmptyLists_HaveNoEndTagOrOneAtOnce) {
    EXPECT_EQ(Read("<macros/>").endTagBegin, 9U);
    EXPECT_EQ(Read("<macros/>").rootTagEnd, 9U);
    EXPECT_EQ(Read("<macros></macros>").endTagBegin, 8U);
}

TEST(MacroXmlReader, Actions_BelongToTheirMacro_AtAnyDepth) {
    const MacroXml xml = Read(
        "<macros><action code='1'/><other><macro/><action code='2'/></other>"
        "<macro><actions><action code='3'/><x><action code='4'/></x></actions></macro>"
        "<macro/></macros>");
    ASSERT_THAT(xml.macros, SizeIs(2));
    EXPECT_THAT(xml.macros[0].actions, SizeIs(2));
    EXPECT_THAT(xml.macros[1].actions, IsEmpty());
}

TEST(MacroXmlReader, Refused_WithASentence) {
    const std::string bomb =
        "<?xml version='1.0'?><!DOCTYPE macros [<!ENTITY a 'aaaaaaaaaa'>"
        "<!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'><!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;'>]>"
        "<macros>&c;</macros>";
    const std::string wide = [] {
        std::string text = "\xff\xfe";
        for (const char sign : std::string("<macros/>")) {
            text += sign;
            text += '\0';
        }
        return text;
    }();
    std::string deep = "<macros>";
    for (int depth = 0; depth < 20; ++depth) {
        deep += "<a>";
    }
    const struct {
        const char* name;
        std::string bytes;
        const char* sentence;
    } rows[] = {
        {"entity bomb", bomb, "It declares a type of document, which no macro file does."},
        {"unknown entity", "<macros>&x;</macros>", "It is damaged in line 1"},
        {"another encoding", "<?xml version='1.0' encoding='iso-8859-1'?><macros/>",
         "It is not written in UTF-8."},
        {"two marks", "\xef\xbb\xbf\xef\xbb\xbf<macros><macro key='1'/></macros>",
         "two marks of UTF-8"},
        {"bytes of another encoding", "<macros a='\xe9'/>", "It is not written in UTF-8."},
        {"UTF-16", wide, "It is not written in UTF-8."},
        {"a zero", std::string("<macros/>\0", 10), "It is not written in UTF-8."},
        {"cut in a tag", "<macros>\n<macro key='5", "It is damaged in line 2"},
        {"cut between tags", "<macros><macro key='5'>", "It is damaged in line 1"},
        {"two lists", "<macros/><macros/>", "It is damaged in line 1"},
        {"twice an attribute", "<macros><macro key='1' key='2'/></macros>", "It is damaged"},
        {"another document", "<html><macros/></html>", "It is no macro file"},
        {"a list with a prefix", "<m:macros/>", "It is no macro file"},
        {"too deep", deep, "It is nested more deeply than any macro file."},
        {"a long tag", "<macros a='" + std::string(9000, 'x') + "'/>", "It has a tag"},
        {"nothing", "", "It is damaged in line 1"},
    };
    for (const auto& row : rows) {
        EXPECT_THAT(Refusal(row.bytes), HasSubstr(row.sentence)) << row.name;
    }
}

TEST(MacroXmlReader, EveryCutOfAFile_IsRefused) {
    const std::string whole =
        "\xef\xbb\xbf<?xml version='1.0'?><macros>\u20ac<macro a='&amp;'><!-- x "
        "--></macro></macros>";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_NE(Refusal(whole.substr(0, length)), "(taken)") << length;
    }
    EXPECT_EQ(Refusal(whole), "(taken)");
}

// As large as a file may be, of what costs a reader most.
TEST(MacroXmlReader, LargeFiles_AreReadOrRefusedQuickly_Long) {
    const auto filled = [](const std::string& piece) {
        std::string bytes = "<macros>";
        while (bytes.size() + piece.size() + 9 <= kMostXmlBytes) {
            bytes += piece;
        }
        return bytes + "</macros>";
    };
    std::string manyAttributes = "<macro";
    for (int number = 0; manyAttributes.size() < 8000; ++number) {
        manyAttributes += " a" + std::to_string(number) + "=''";
    }
    for (const std::string& bytes :
         {filled("<macro/>"), filled("<a>"), filled(manyAttributes + "/>"), filled("&amp;<a/>"),
          std::string(kMostXmlBytes, '<'), std::string(kMostXmlBytes + 1, 'x')}) {
        const testing_support::ProcessorTime time;
        static_cast<void>(ReadMacroXml(bytes));
        EXPECT_LT(time.Seconds(), 10.0 * testing_support::kPace) << bytes.substr(0, 40);
    }
}

}  // namespace
}  // namespace spellwick
