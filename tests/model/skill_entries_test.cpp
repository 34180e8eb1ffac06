#include "model/skill_entries.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {
namespace {

SharedState StateWithRows() {
    SharedState state;
    state.Spells.GrowTo(kLastRow);
    for (i32 row = 0; row <= kLastRow; ++row) {
        state.Spells(row).Mana = state.Spells(row).MinimumSkill = state.Spells(row).MaximumSkill =
            static_cast<i16>(row);
    }
    return state;
}

// The rows whose cell is 120.
template <typename Cell>
std::vector<i32> Changed(const SharedState& state, Cell cell) {
    std::vector<i32> rows;
    for (i32 row = 0; row <= kLastRow; ++row) {
        if (state.Spells(row).*cell == 120) {
            rows.push_back(row);
        }
    }
    return rows;
}

struct SkillRow {
    const char* name;
    const char* text;
    i16 value;
};

// covers ODDITY(skill-limit)
TEST(SkillEntry, Oddity_FourCharactersAtMost125) {
    const SkillRow rows[] = {
        {"nothing", "", 0},
        {"letters", "abc", 0},
        {"lone plus", "+", 0},
        {"lone minus", "-", 0},
        {"number", "80", 80},
        {"the limit", "125", 125},
        {"beyond the limit", "126", 125},
        {"130", "130", 125},
        {"spun to 150", "150", 125},
        {"four of five digits", "12345", 125},
        {"four of ten digits", "0012999999", 12},
        {"leading blank", " 99", 99},
        {"plus", "+7", 7},
        {"negative", "-5", -5},
        {"negative, four characters", "-9999", -999},
        {"half to even, down", "12.5", 12},
        {"half to even, up", "13.5", 14},
        {"number before letters", "7abc", 7},
        {"power of ten", "9e99", 125},
    };
    for (const SkillRow& row : rows) {
        EXPECT_EQ(ReadSkillEntry(row.text), row.value) << row.name;
    }
    EXPECT_EQ(ReadSkillEntry(std::string(1'000'000, '1')), 125);
}

TEST(SkillEntry, FarBelowZero_Overflows) {
    EXPECT_EQ(FailureOf([] { ReadSkillEntry("-9e9"); }), FailureKind::kOverflow);
}

TEST(SkillOfGroup, Table_MageryTwiceNecroTwiceChivalry) {
    SharedState state;
    state.Magery = 1;
    state.Necro = 2;
    state.Chivalry = 3;
    const i16 expected[] = {1, 2, 2, 3, 3};
    for (i32 group = 0; group < kSkillGroups; ++group) {
        EXPECT_EQ(SkillOfGroup(state, group), expected[group]) << group;
    }
    SetSkillOfGroup(state, 0, 10);
    SetSkillOfGroup(state, 2, 20);
    SetSkillOfGroup(state, 4, 30);
    EXPECT_EQ(state.Magery, 10);
    EXPECT_EQ(state.Necro, 20);
    EXPECT_EQ(state.Chivalry, 30);
}

TEST(RequiredIntelligence, Magery_TheWholeCircle) {
    SharedState state = StateWithRows();
    SetRequiredIntelligence(state, 0, 3, 120);
    EXPECT_EQ(Changed(state, &SpellRecord::Mana),
              (std::vector<i32>{24, 25, 26, 27, 28, 29, 30, 31}));
}

// covers ODDITY(first-line-intelligence)
TEST(RequiredIntelligence, Oddity_OtherGroups_TheFirstSpellOfThePage) {
    const i32 firstRows[] = {0, 64, 72, 80, 88};
    for (i32 group = 1; group < kSkillGroups; ++group) {
        for (i32 line = 0; line < 8; ++line) {
            SharedState state = StateWithRows();
            SetRequiredIntelligence(state, group, line, 120);
            EXPECT_EQ(Changed(state, &SpellRecord::Mana), std::vector<i32>{firstRows[group]});
        }
    }
}

// covers ODDITY(circle-skill)
TEST(RequiredSkill, Oddity_AlwaysTheCircleOfTheLine) {
    SharedState state = StateWithRows();
    SetRequiredSkill(state, 7, 120);
    EXPECT_EQ(Changed(state, &SpellRecord::MinimumSkill),
              (std::vector<i32>{56, 57, 58, 59, 60, 61, 62, 63}));
}

TEST(SafeSkill, OnlyMagery_TheWholeCircle) {
    for (i32 group = 1; group < kSkillGroups; ++group) {
        SharedState state = StateWithRows();
        SetSafeSkill(state, group, 0, 120);
        EXPECT_TRUE(Changed(state, &SpellRecord::MaximumSkill).empty()) << group;
    }
    SharedState state = StateWithRows();
    SetSafeSkill(state, 0, 0, 120);
    EXPECT_EQ(Changed(state, &SpellRecord::MaximumSkill),
              (std::vector<i32>{0, 1, 2, 3, 4, 5, 6, 7}));
}

// covers ODDITY(equal-circles)
TEST(LevelCircles, Oddity_TheFirstSpellSpeaksForItsCircle) {
    SharedState state = StateWithRows();
    LevelCircles(state);
    for (i32 row = 0; row <= kLastRow; ++row) {
        const i32 from = row < 64 ? row / 8 * 8 : row;
        EXPECT_EQ(state.Spells(row).Mana, from) << row;
        EXPECT_EQ(state.Spells(row).MinimumSkill, from) << row;
        EXPECT_EQ(state.Spells(row).MaximumSkill, from) << row;
    }
}

TEST(LevelCircles, ValuesBeyondTheEntries_AreCutAsAnEntryIs) {
    SharedState state = StateWithRows();
    state.Spells(8).Mana = 126;
    state.Spells(8).MinimumSkill = 12345;
    state.Spells(8).MaximumSkill = -12345;
    LevelCircles(state);
    EXPECT_EQ(state.Spells(15).Mana, 125);
    EXPECT_EQ(state.Spells(15).MinimumSkill, 125);
    EXPECT_EQ(state.Spells(15).MaximumSkill, -123);
}

}  // namespace
}  // namespace spellwick
