#include "link/title_pattern.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick {
namespace {

TitlePattern Pattern(std::string_view text) {
    TitlePattern::Result read = TitlePattern::Read(text);
    EXPECT_EQ(read.fault, "");
    return read.pattern.value();
}

struct MatchRow {
    const char* name;
    const char* pattern;
    const char* title;
    std::optional<TitleFields> fields;
};

TEST(TitlePattern, Match_Table) {
    const char* plain = "{name} - Game - {any}";
    const char* both = "{name} ({shard}) - Game - {any}";
    const std::vector<MatchRow> rows{
        {"a name", plain, "Bran - Game - 1.0", TitleFields{"Bran", ""}},
        {"a name with blanks", plain, "Lady  Ash of Oak - Game - 1",
         TitleFields{"Lady  Ash of Oak", ""}},
        {"a name with the divider", plain, "Bran - the Bold - Game - 1",
         TitleFields{"Bran - the Bold", ""}},
        {"the longest name", plain, "Bran - Game - Game - 1", TitleFields{"Bran - Game", ""}},
        {"quotes, slashes and commas", plain, R"("O'Neil", a/b\c - Game - 1)",
         TitleFields{R"("O'Neil", a/b\c)", ""}},
        {"other scripts", plain, "🔥 Zoë שלום - Game - 1", TitleFields{"🔥 Zoë שלום", ""}},
        {"braces in the title", plain, "{name} - Game - {any}", TitleFields{"{name}", ""}},
        {"brackets in a name", plain, "Bran (x) [y] - Game - 1", TitleFields{"Bran (x) [y]", ""}},
        {"nothing for {any}", plain, "Bran - Game - ", TitleFields{"Bran", ""}},
        {"no name", plain, " - Game - 1.0", std::nullopt},
        {"a blank name", plain, "   - Game - 1.0", std::nullopt},
        {"another case", plain, "Bran - game - 1.0", std::nullopt},
        {"cut off", plain, "Bran - Game -", std::nullopt},
        {"empty", plain, "", std::nullopt},
        {"name and shard", both, "Bran (Oak Hill) - Game - 1", TitleFields{"Bran", "Oak Hill"}},
        {"a bracket in the name too", both, "Bran (x) (Oak) - Game - 1",
         TitleFields{"Bran (x)", "Oak"}},
        {"an empty shard", both, "Bran () - Game - 1", std::nullopt},
        {"a blank shard", both, "Bran ( ) - Game - 1", std::nullopt},
        {"no shard", both, "Bran - Game - 1", std::nullopt},
        {"the shard first", "[{shard}] {name} - Game", "[Oak] Bran] x - Game",
         TitleFields{"Bran] x", "Oak"}},
        {"fixed text in front", "UO - {name} - Game", "UO - Bran - Game", TitleFields{"Bran", ""}},
        {"fixed text in front is missing", "UO - {name} - Game", "Bran - Game", std::nullopt},
        {"fixed text would overlap", "a{name}a", "a", std::nullopt},
        {"many fields", "{name} - HP {any}/{any}, MP {any} - [T {any}]",
         "B - HP 1/2, MP 3 - HP 8/9, MP 7 - [T 4]", TitleFields{"B - HP 1/2, MP 3", ""}},
        {"{any} before the name", "{any}: {name} - G", "12: 34: Bran - G",
         TitleFields{"34: Bran", ""}},
        {"the name alone", "{name}", "Bran", TitleFields{"Bran", ""}},
        {"fixed text alone", "Game", "Game", TitleFields{}},
        {"fixed text alone, with more", "Game", "Game 2", std::nullopt},
        {"fixed text and anything", "Game v{any}", "Game v2", TitleFields{}},
        {"two anythings", "Game - {any}({any})", "Game - account(Oak)", TitleFields{}},
        {"two anythings, one missing", "Game - {any}({any})", "Game - account", std::nullopt},
        {"a shard alone", "on {shard}!", "on Oak!", TitleFields{"", "Oak"}},
        {"a shard alone, blank", "on {shard}!", "on !", std::nullopt},
    };
    for (const MatchRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Pattern(row.pattern).Match(row.title), row.fields);
    }
}

TEST(TitlePattern, Read_NamesWhatIsWrong) {
    const std::pair<const char*, const char*> rows[] = {
        {"", "a form of a title is empty"},
        {"{name", "a brace has no partner"},
        {"name}", "a brace has no partner"},
        {"a } b { c", "a brace has no partner"},
        {"{name}{any}", "no fixed text stands between two braces"},
        {"{name} {name}", "{name} stands there twice"},
        {"{shard} {shard}", "{shard} stands there twice"},
        {"{Name} - x", "\"{Name}\" is none of {name}, {shard} and {any}"},
        {"{} - x", "\"{}\" is none of {name}, {shard} and {any}"},
    };
    for (const auto& [text, fault] : rows) {
        SCOPED_TRACE(text);
        const TitlePattern::Result read = TitlePattern::Read(text);
        EXPECT_FALSE(read.pattern);
        EXPECT_EQ(read.fault, fault);
    }
}

TEST(TitlePattern, FixedText_CountsWhatIsCompared) {
    EXPECT_EQ(Pattern("{name} - Game - {any}").FixedText(), 10U);
    EXPECT_EQ(Pattern("Game").FixedText(), 4U);
    EXPECT_EQ(Pattern("{name}").FixedText(), 0U);
}

TEST(TitlePattern, HugeTitle_IsDividedInOnePass) {
    std::string title;
    for (int i = 0; i < 20000; ++i) {
        title += " - G - H";
    }
    EXPECT_FALSE(Pattern("{any} - G - {name} - H - {any} - X - {any}").Match(title).has_value());
    EXPECT_TRUE(Pattern("{any} - G - {name} - G - {any}").Match(title).has_value());
}

}  // namespace
}  // namespace spellwick
