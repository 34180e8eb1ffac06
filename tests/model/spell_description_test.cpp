// The texts of the info window, for made-up spells and for all shipped ones.
#include "model/spell_description.h"

#include <sstream>

#include <gtest/gtest.h>

#include "model/spell_data.h"
#include "model/spell_lookup.h"
#include "tests/support/failures.h"
#include "tests/support/file_bytes.h"

namespace spellwick {
namespace {

SharedState StateWithSpell(i32 row) {
    SharedState state;
    InitReagentTables(state);
    state.Spells.GrowTo(104);
    SpellRecord& spell = state.Spells(row);
    spell.Name = "Dim Spark";
    spell.Words = "Vas Lor";
    spell.School = kMagery;
    spell.Cost = 12;
    spell.Mana = 4;
    return state;
}

TEST(SpellDescription, NameWordsAndCost_AreThoseOfTheRow) {
    const SpellDescription text = DescribeSpell(StateWithSpell(20), 20);
    EXPECT_EQ(text.name, "Dim Spark");
    EXPECT_EQ(text.words, "Vas Lor");
    EXPECT_EQ(text.cost, "12 gold / 4 mana");
}

TEST(SpellDescription, Reagents_AreNamedInOrderWithoutAmounts) {
    SharedState state = StateWithSpell(3);
    EXPECT_EQ(DescribeSpell(state, 3).reagents, "");
    state.Spells(3).Reagents(1) = 2;
    EXPECT_EQ(DescribeSpell(state, 3).reagents, "Mandrake Root");
    state.Spells(3).Reagents(13) = 1;
    state.Spells(3).Reagents(5) = 1;
    EXPECT_EQ(DescribeSpell(state, 3).reagents, "Mandrake Root, Garlic, Pig Iron");
}

TEST(SpellDescription, Tithes_AreShownWithTheirAmount) {
    SharedState state = StateWithSpell(80);
    state.Spells(80).Reagents(kTithes) = 20;
    EXPECT_EQ(DescribeSpell(state, 80).reagents, "20 Tithes");
}

// covers ODDITY(info-tithes-only)
TEST(SpellDescription, Reagents_Oddity_TithesHideThem) {
    SharedState state = StateWithSpell(80);
    state.Spells(80).Reagents(1) = 1;
    state.Spells(80).Reagents(kTithes) = 10;
    EXPECT_EQ(DescribeSpell(state, 80).reagents, "10 Tithes");
}

TEST(SpellDescription, FourTexts_AreExpandedAndTrimmedEachInItsPlace) {
    SharedState state = StateWithSpell(63);
    state.Magery = 100;
    state.TargetResist = 100;
    SpellRecord& spell = state.Spells(63);
    spell.DamageText = " #Formula07; ";
    spell.DurationText = "x#Formula18; s";
    spell.ExtraText1 = " plain ";
    spell.ExtraText2 = "#Formula31";
    const SpellDescription text = DescribeSpell(state, 63);
    EXPECT_EQ(text.damage, "24");
    EXPECT_EQ(text.duration, "x100 s");
    EXPECT_EQ(text.extraInfo, "plain");
    EXPECT_EQ(text.resisting, "44% chance");  // row 63 is in circle 8
}

TEST(SpellDescription, BadMarkerOrRow_FailsAsSubscript) {
    SharedState state = StateWithSpell(1);
    state.Spells(1).DamageText = "#Formula00;";
    EXPECT_EQ(FailureOf([&] { DescribeSpell(state, 1); }), FailureKind::kSubscript);
    EXPECT_EQ(FailureOf([&] { DescribeSpell(state, 105); }), FailureKind::kSubscript);
    EXPECT_EQ(FailureOf([&] { DescribeSpell(state, -1); }), FailureKind::kSubscript);
}

TEST(SpellShortage, Bounds_ComparesIntelligenceWithManaAndSkillWithItsMinimum) {
    SharedState state = StateWithSpell(1);
    state.Spells(1).MinimumSkill = 36;
    state.Intelligence = 4;
    state.Magery = 36;
    EXPECT_FALSE(ShortageFor(state, 1).intelligence);
    EXPECT_FALSE(ShortageFor(state, 1).skill);
    state.Intelligence = 3;
    state.Magery = 35;
    EXPECT_TRUE(ShortageFor(state, 1).intelligence);
    EXPECT_TRUE(ShortageFor(state, 1).skill);
}

TEST(SpellShortage, OtherSchools_AskForTheirOwnSkill) {
    SharedState state = StateWithSpell(64);
    state.Spells(64).MinimumSkill = 20;
    state.Spells(64).School = kNecromancer;
    state.Magery = 100;
    EXPECT_TRUE(ShortageFor(state, 64).skill);
    state.Necro = 20;
    EXPECT_FALSE(ShortageFor(state, 64).skill);
}

struct CappedRow {
    const char* text;
    i16 value;
};

TEST(EnteredValue, Texts_AreReadByTheirPrefixAndCappedAt100) {
    constexpr CappedRow kRows[] = {
        {"", 0},
        {" 38", 38},
        {"99", 99},
        {"99.5", 100},
        {"100", 100},
        {"250", 100},
        {"1e9", 100},
        {"-5", -5},
        {"+7", 7},
        {"-32768", -32768},
        {"100.4", 100},
        {"101", 100},
        {"--5", 0},
        {"5-3", 5},
        {"0.5", 0},
        {"1.5", 2},
        {"99999999999999999999", 100},
    };
    for (const CappedRow& row : kRows) {
        EXPECT_EQ(EnteredValue(row.text), row.value) << row.text;
    }
}

// covers ODDITY(info-no-lower-limit)
TEST(EnteredValue, Negative_Oddity_StandsAndFailsBelow16Bits) {
    EXPECT_EQ(EnteredValue("-250"), -250);
    EXPECT_EQ(FailureOf([] { EnteredValue("-32769"); }), FailureKind::kOverflow);
}

// Every text of every shipped spell for three characters, against a file that was calculated
// separately.
TEST(SpellDescription, DeliveredSpells_MatchTheGoldenFile) {
    struct Character {
        const char* name;
        i16 magery, evalInt, intelligence, spiritSpeak, targetResist;
    };
    constexpr Character kCharacters[] = {
        {"novice", 30, 0, 45, 10, 0},
        {"adept", 65, 70, 80, 55, 67},
        {"master", 100, 100, 100, 100, 20},
    };
    SharedState state;
    InitReagentTables(state);
    ASSERT_TRUE(LoadSpellData(state, SPELLWICK_SPELL_DATA));
    ASSERT_EQ(state.SpellCount, 96);
    std::ostringstream lines;
    for (const Character& character : kCharacters) {
        state.Magery = character.magery;
        state.EvalInt = character.evalInt;
        state.Intelligence = character.intelligence;
        state.SpiritSpeak = character.spiritSpeak;
        state.TargetResist = character.targetResist;
        lines << "# " << character.name << ": Magery " << character.magery << ", Evaluate Int. "
              << character.evalInt << ", Intelligence " << character.intelligence
              << ", Spirit Speak " << character.spiritSpeak << ", target resist "
              << character.targetResist << "\n";
        for (i32 row = 0; row <= kLastPagedRow; ++row) {
            const SpellDescription text = DescribeSpell(state, row);
            lines << character.name << "|" << row << "|" << text.name << "|" << text.damage << "|"
                  << text.duration << "|" << text.extraInfo << "|" << text.resisting << "\n";
        }
    }
    EXPECT_EQ(lines.str(), BytesOf(SPELLWICK_GOLDEN_TEXTS));
}

}  // namespace
}  // namespace spellwick
