#include "model/spell_data.h"

#include <sstream>

#include <gtest/gtest.h>

#include "tests/model/spell_file_text.h"
#include "tests/support/failures.h"

namespace spellwick {
namespace {

bool Load(SharedState& state, const std::string& text) {
    std::istringstream input(text);
    return LoadSpellData(state, input);
}

SharedState Loaded(const std::string& text) {
    SharedState state;
    EXPECT_TRUE(Load(state, text));
    return state;
}

SpellRecord FirstRow(const std::string& text) {
    return Loaded(text).Spells(0);
}

SpellRecord RowOf(const std::string& line) {
    std::istringstream input(line);
    SpellDataReader reader(input);
    SpellRecord spell;
    ReadSpellRow(reader, spell);
    return spell;
}

void ExpectSame(const SpellRecord& spell, const SpellRecord& other) {
    EXPECT_EQ(spell.Number, other.Number);
    EXPECT_EQ(spell.Name, other.Name);
    EXPECT_EQ(spell.School, other.School);
    EXPECT_EQ(spell.SecondSkill, other.SecondSkill);
    EXPECT_EQ(spell.Mana, other.Mana);
    EXPECT_EQ(spell.MinimumSkill, other.MinimumSkill);
    EXPECT_EQ(spell.MaximumSkill, other.MaximumSkill);
    EXPECT_EQ(spell.Reagents, other.Reagents);
    EXPECT_EQ(spell.ReagentInput, other.ReagentInput);
    EXPECT_EQ(spell.InTown, other.InTown);
    EXPECT_EQ(spell.File1, other.File1);
    EXPECT_EQ(spell.File2, other.File2);
    EXPECT_EQ(spell.File3, other.File3);
    EXPECT_EQ(spell.File4, other.File4);
    EXPECT_EQ(spell.Words, other.Words);
    EXPECT_EQ(spell.SpellText, other.SpellText);
    EXPECT_EQ(spell.DamageText, other.DamageText);
    EXPECT_EQ(spell.DurationText, other.DurationText);
    EXPECT_EQ(spell.ExtraText1, other.ExtraText1);
    EXPECT_EQ(spell.ExtraText2, other.ExtraText2);
    EXPECT_EQ(spell.File5, other.File5);
}

TEST(SpellRow, AllThirtyTwoValues_ReachTheirFields) {
    const SpellRecord spell = RowOf(
        "1001, Ward, Chivalry, Karma, 1002, 1003, 1004, "
        "11,12,13,14,15,16,17,18,19,20,21,22,23,24, 31, 32, 33, fourth, Sanct, 1, "
        "damage, duration, extra, resisting, 1005\n");
    EXPECT_EQ(spell.Number, 1001);
    EXPECT_EQ(spell.Name, "Ward");
    EXPECT_EQ(spell.School, kChivalry);
    EXPECT_EQ(spell.SecondSkill, kKarma);
    EXPECT_EQ(spell.Mana, 1002);
    EXPECT_EQ(spell.MinimumSkill, 1003);
    EXPECT_EQ(spell.MaximumSkill, 1004);
    for (i32 reagent = 1; reagent <= 14; ++reagent) {
        EXPECT_EQ(spell.Reagents(reagent), 10 + reagent);
        EXPECT_EQ(spell.ReagentInput(reagent), 10 + reagent);
    }
    EXPECT_EQ(spell.File1, 31);
    EXPECT_EQ(spell.File2, 32);
    EXPECT_EQ(spell.File3, 33);
    EXPECT_EQ(spell.File4, "fourth");
    EXPECT_EQ(spell.Words, "Sanct");
    EXPECT_EQ(spell.InTown, 1);
    EXPECT_EQ(spell.DamageText, "damage");
    EXPECT_EQ(spell.DurationText, "duration");
    EXPECT_EQ(spell.ExtraText1, "extra");
    EXPECT_EQ(spell.ExtraText2, "resisting");
    EXPECT_EQ(spell.File5, 1005);
    EXPECT_EQ(spell.SpellText, "");
    EXPECT_EQ(spell.Cost, 0);
}

TEST(SpellRow, WordsOfTheSchools_CompareExactly) {
    const struct {
        const char* word;
        i32 school;
    } rows[] = {{"Magery", 1}, {"Necromancer", 2}, {"Chivalry", 3},    {"magery", 0},
                {"MAGERY", 0}, {"Magery ", 1},     {"Necromancy", 0},  {"none", 0},
                {"", 0},       {"\"Magery\"", 1},  {"\"Magery \"", 0}, {"Mag", 0}};
    for (const auto& row : rows) {
        EXPECT_EQ(FirstRow(FileWithValue(3, row.word)).School, row.school) << row.word;
    }
}

TEST(SpellRow, WordsOfTheSecondSkills_CompareExactly) {
    const struct {
        const char* word;
        i32 skill;
    } rows[] = {{"Eval Int", 1}, {"Spirit Speak", 2}, {"Karma", 3}, {"eval int", 0},
                {"EvalInt", 0},  {"none", 0},         {"", 0}};
    for (const auto& row : rows) {
        EXPECT_EQ(FirstRow(FileWithValue(4, row.word)).SecondSkill, row.skill) << row.word;
    }
}

TEST(SpellRow, BrokenOverTwoLinesAtAnyPlace_ReadsTheSame) {
    const RowValues values = SampleRow(1);
    const SpellRecord whole = RowOf(Join(values) + "\n");
    for (std::size_t at = 1; at < values.size(); ++at) {
        SCOPED_TRACE(at);
        const RowValues first(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(at));
        const RowValues rest(values.begin() + static_cast<std::ptrdiff_t>(at), values.end());
        ExpectSame(RowOf(Join(first) + "\n" + Join(rest) + "\n"), whole);
    }
    ExpectSame(RowOf(Join(values, "\n") + "\n"), whole);
}

TEST(SpellRow, SeveralRowsOnOneLine_ReadTheSame) {
    std::string text = "Title, 96\n";
    for (int row = 0; row < 96; ++row) {
        text += Join(SampleRow(row + 1), ",") + (row % 3 == 2 ? "\n" : ",");
    }
    const SharedState state = Loaded(text);
    const SharedState lines = Loaded(FileOf("96", 96));
    for (i32 row = 0; row < 96; ++row) {
        ExpectSame(state.Spells(row), lines.Spells(row));
    }
}

TEST(SpellRow, BlanksBeforeAValue_AreSkipped) {
    const SpellRecord whole = RowOf(Join(SampleRow(1)) + "\n");
    ExpectSame(RowOf("   " + Join(SampleRow(1), ",     ") + "\n"), whole);
    ExpectSame(RowOf("\t" + Join(SampleRow(1), ",\t ") + "\n"), whole);
    ExpectSame(RowOf(Join(SampleRow(1), " , ") + "  \n"), whole);
    ExpectSame(RowOf(Join(SampleRow(1), ",") + "\n"), whole);
}

TEST(SpellRow, QuotedText_KeepsCommasBlanksAndLines) {
    EXPECT_EQ(FirstRow(FileWithValue(28, "\"one, two\"")).DamageText, "one, two");
    EXPECT_EQ(FirstRow(FileWithValue(28, "\"  two  \"")).DamageText, "  two  ");
    EXPECT_EQ(FirstRow(FileWithValue(28, "\"\"")).DamageText, "");
    EXPECT_EQ(FirstRow(FileWithValue(28, "\"a\nb\"")).DamageText, "a\nb");
    EXPECT_EQ(FirstRow(FileWithValue(28, "  \"quoted\"  ")).DamageText, "quoted");
    EXPECT_EQ(FirstRow(FileWithValue(28, "a \"b\" c")).DamageText, "a \"b\" c");
    EXPECT_EQ(FirstRow(FileWithValue(28, "")).DamageText, "");
}

TEST(SpellRow, FormulaMarkers_StayAsTheyStand) {
    EXPECT_EQ(FirstRow(FileWithValue(28, "#Formula24; seconds")).DamageText, "#Formula24; seconds");
}

TEST(SpellRow, Numbers_AreDecimalAndRoundHalfToEven) {
    const struct {
        const char* text;
        i16 value;
    } rows[] = {{"7", 7},   {"+7", 7},    {"-7", -7}, {"007", 7},       {"2.5", 2},
                {"3.5", 4}, {"1e2", 100}, {".6", 1},  {"32767", 32767}, {"-32768", -32768}};
    for (const auto& row : rows) {
        EXPECT_EQ(FirstRow(FileWithValue(5, row.text)).Mana, row.value) << row.text;
    }
}

TEST(SpellRow, ByteFields_TakeTheirWholeRange) {
    for (const char* text : {"0", "255"}) {
        const int value = std::stoi(text);
        EXPECT_EQ(FirstRow(FileWithValue(22, text)).File1, value);
        EXPECT_EQ(FirstRow(FileWithValue(23, text)).File2, value);
        EXPECT_EQ(FirstRow(FileWithValue(24, text)).File3, value);
        EXPECT_EQ(FirstRow(FileWithValue(27, text)).InTown, value);
        for (int reagent = 1; reagent <= 14; ++reagent) {
            EXPECT_EQ(FirstRow(FileWithValue(7 + reagent, text)).Reagents(reagent), value);
        }
    }
}

TEST(SpellFile, Header_TitleIsDroppedAndCountKept) {
    for (const char* title : {"Spell table of the season", "", "\"a, b\"", "\"a\nb\"", "42"}) {
        std::istringstream input(std::string(title) + ", 96\n");
        SpellDataReader reader(input);
        EXPECT_EQ(ReadSpellCount(reader), 96) << title;
    }
}

TEST(SpellFile, MadeUpExample_Loads) {
    std::string text = "Spell table of the season, 96\n";
    for (int row = 0; row < 96; ++row) {
        text += row == 80
                    ? "81, Small Blessing, Chivalry, Karma, 10, 0, 30, "
                      "0,0,0,0,0,0,0,0,0,0,0,0,0,10, 0, 0, 0, none, Sacra Lumen, 1, none, "
                      "none, none, none, 0\n"
                    : "1, Dim Spark, Magery, Eval Int, 4, 0, 20, 0,0,1,0,0,0,1,0,0,0,0,0,0,0, "
                      "0, 0, 0, none, Vas Lor, 1, none, 12 seconds, See #Formula07 for the "
                      "amount, none, 0\n";
    }
    const SharedState state = Loaded(text);
    EXPECT_EQ(state.Spells(0).Name, "Dim Spark");
    EXPECT_EQ(state.Spells(0).Reagents(3), 1);
    EXPECT_EQ(state.Spells(0).Reagents(7), 1);
    EXPECT_EQ(state.Spells(0).ExtraText1, "See #Formula07 for the amount");
    EXPECT_EQ(state.Spells(80).Name, "Small Blessing");
    EXPECT_EQ(state.Spells(80).Reagents(14), 10);
    EXPECT_EQ(state.Spells(80).SecondSkill, kKarma);
}

TEST(SpellFile, FirstValueOfARow_DoesNotNumberIt) {
    std::string text = "Title, 96\n";
    for (int row = 0; row < 96; ++row) {
        text += Join(SampleRow(1000 - row)) + "\n";
    }
    const SharedState state = Loaded(text);
    for (i32 row = 0; row < 96; ++row) {
        EXPECT_EQ(state.Spells(row).Number, 1000 - row);
    }
}

struct BoundRow {
    i32 count;
    i32 last;
};

TEST(SpellFile, Counts_SizeTheTableToTheNextMultipleOfEightAbove) {
    for (const BoundRow& row : {BoundRow{88, 96},
                                {95, 96},
                                {96, 104},
                                {97, 104},
                                {103, 104},
                                {104, 112},
                                {30000, 30008}}) {
        const SharedState state = Loaded(FileOf(std::to_string(row.count), row.count));
        EXPECT_EQ(state.SpellCount, row.count);
        EXPECT_EQ(state.Spells.Last(), row.last);
        EXPECT_EQ(LastRowFor(row.count), row.last);
        EXPECT_EQ(state.Spells(row.count - 1).Name, "Dim Spark");
    }
}

TEST(SpellFile, LastRowFor_GreatestCountOverflows) {
    EXPECT_EQ(LastRowFor(0), 8);
    EXPECT_EQ(LastRowFor(2147483639), 2147483640);
    EXPECT_EQ(FailureOf([] { LastRowFor(2147483647); }), FailureKind::kOverflow);
}

TEST(SpellFile, Count96_LeavesRows96To104Empty) {
    const SharedState state = Loaded(FileOf("96", 96));
    for (i32 row = 96; row <= 104; ++row) {
        SCOPED_TRACE(row);
        ExpectSame(state.Spells(row), SpellRecord{});
    }
    EXPECT_EQ(FailureOf([&] { state.Spells(105); }), FailureKind::kSubscript);
}

TEST(SpellFile, Row96OfAFileWith97_IsLoaded) {
    EXPECT_EQ(Loaded(FileOf("97", 97)).Spells(96).Name, "Dim Spark");
}

TEST(SpellFile, SecondLoad_ReplacesTheTable) {
    SharedState state = Loaded(FileOf("104", 104));
    ASSERT_TRUE(Load(state, FileOf("88", 88)));
    EXPECT_EQ(state.Spells.Last(), 96);
    EXPECT_EQ(state.SpellCount, 88);
    EXPECT_EQ(state.Spells(90).Name, "");
}

TEST(SpellFile, TextBehindTheLastRow_IsNotRead) {
    EXPECT_TRUE([] {
        SharedState state;
        return Load(state, FileOf("96", 96) + "anything, \"at all");
    }());
}

TEST(SpellFile, LineEndsOfAllSystems_ReadTheSame) {
    const std::string unixText = FileOf("96", 96);
    const SharedState expected = Loaded(unixText);
    for (const char* lineEnd : {"\r\n", "\r"}) {
        std::string text;
        for (const char c : unixText) {
            text += c == '\n' ? std::string(lineEnd) : std::string(1, c);
        }
        const SharedState state = Loaded(text);
        for (i32 row = 0; row < 96; ++row) {
            ExpectSame(state.Spells(row), expected.Spells(row));
        }
    }
}

TEST(SpellRow, LoneCarriageReturn_EndsAValue) {
    ExpectSame(RowOf(Join(SampleRow(1), "\r") + "\r"), RowOf(Join(SampleRow(1)) + "\n"));
}

TEST(SpellFile, ByteOrderMark_IsSkipped) {
    const std::string mark = "\xEF\xBB\xBF";
    EXPECT_TRUE([&] {
        SharedState state;
        return Load(state, mark + FileOf("96", 96));
    }());
    std::istringstream input(mark + "\"a, b\", 96\n");
    SpellDataReader reader(input);
    EXPECT_EQ(ReadSpellCount(reader), 96) << "before quotes as well";
}

TEST(SpellFile, PartOfAByteOrderMark_IsAPartOfTheFirstValue) {
    for (const std::string part : {"\xEF", "\xEF\xBB"}) {
        for (const std::string value : {"", "x", "\"a"}) {
            std::istringstream input(part + value + ", 96\n");
            SpellDataReader reader(input);
            EXPECT_EQ(reader.ReadText(), part + value);
            EXPECT_EQ(reader.ReadI32(), 96);
        }
    }
}

}  // namespace
}  // namespace spellwick
