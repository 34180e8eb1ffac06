#include "model/cast_rules.h"

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {
namespace {

constexpr const char* kMageryText = "Not enough Magery skill to cast this spell.";
constexpr const char* kNecromancyText = "Not enough Necromancy skill to cast this spell.";
constexpr const char* kChivalryText = "Not enough Chivalry skill to use this ability.";

TEST(SkillRefusal, AllRows_HaveTheirMessage) {
    for (i32 row = 0; row <= 96; ++row) {
        const char* expected = row == 0    ? nullptr
                               : row <= 64 ? kMageryText
                               : row <= 80 ? kNecromancyText
                               : row <= 90 ? kChivalryText
                                           : nullptr;
        const auto refusal = SkillRefusal(row);
        ASSERT_EQ(refusal.has_value(), expected != nullptr) << row;
        if (expected != nullptr) {
            EXPECT_EQ(*refusal, expected) << row;
        }
    }
}

// covers ODDITY(skill-message-rows)
TEST(SkillRefusal, Oddity_MessagesStandOneRowLate) {
    EXPECT_EQ(SkillRefusal(0), std::nullopt);
    EXPECT_EQ(SkillRefusal(1), kMageryText);
    EXPECT_EQ(SkillRefusal(64), kMageryText);
    EXPECT_EQ(SkillRefusal(65), kNecromancyText);
    EXPECT_EQ(SkillRefusal(80), kNecromancyText);
    EXPECT_EQ(SkillRefusal(81), kChivalryText);
    EXPECT_EQ(SkillRefusal(90), kChivalryText);
    EXPECT_EQ(SkillRefusal(91), std::nullopt);
    EXPECT_EQ(SkillRefusal(95), std::nullopt);
}

TEST(CastTexts, Warnings_ReadAsTold) {
    EXPECT_EQ(kIntelligenceWarning, "Not enough Intelligence to use this spell.");
    EXPECT_EQ(kManaWarning, "Not enough Mana to use this spell.");
    EXPECT_EQ(kBookQuestion,
              "That Spell is not in your SpellBook. Do you want it added to your spellbook so you "
              "can use it now ?");
}

TEST(StockRefusal, Schools_NameReagentsOrTithes) {
    EXPECT_EQ(StockRefusal(3), "Not enough tithing points to use that ability");
    for (const i32 school : {0, 1, 2, 4, -1}) {
        EXPECT_EQ(StockRefusal(school), "Not enough reagents to cast that spell") << school;
    }
}

TEST(RequireSpellRow, Bounds_AreZeroAnd96) {
    EXPECT_EQ(FailureOf([] { RequireSpellRow(0); }), std::nullopt);
    EXPECT_EQ(FailureOf([] { RequireSpellRow(96); }), std::nullopt);
    for (const i32 row : {-1, 97, 104, 32767, -32768}) {
        EXPECT_EQ(FailureOf([&] { RequireSpellRow(row); }), FailureKind::kSubscript) << row;
    }
}

struct DebitRow {
    const char* name = "";
    i32 need = 0;
    const char* counter = "";
    std::optional<std::string> after;
};

TEST(DebitCounter, Table_TakesTheNeedFromCountersAboveZero) {
    const DebitRow rows[] = {
        {"one of five", 1, "5", "4"},
        {"the last", 1, "1", "0"},
        {"not needed", 0, "5", std::nullopt},
        {"counter at zero", 1, "0", std::nullopt},
        {"counter below zero", 1, "-1", std::nullopt},
        {"counter empty", 1, "", std::nullopt},
        {"counter of letters", 1, "abc", std::nullopt},
        {"entry of a sum", 1, "12+3", "11"},
        {"blank before", 2, " 12", "10"},
        {"above four digits", 1, "12345", "12344"},
        {"fraction", 1, "2.5", "1.5"},
        {"largest need", 255, "300", "45"},
    };
    for (const DebitRow& row : rows) {
        EXPECT_EQ(DebitCounter(row.need, row.counter), row.after) << row.name;
    }
}

// covers ODDITY(debit-below-zero)
TEST(DebitCounter, Oddity_CounterFallsBelowZero) {
    EXPECT_EQ(DebitCounter(2, "1"), "-1");
    EXPECT_EQ(DebitCounter(255, "1"), "-254");
    EXPECT_EQ(DebitCounter(2, "-1"), std::nullopt);
}

TEST(CreditCounter, Table_AddsToWhatTheCounterShows) {
    EXPECT_EQ(CreditCounter(1, "5"), "6");
    EXPECT_EQ(CreditCounter(0, "5"), "5");
    EXPECT_EQ(CreditCounter(2, "-1"), "1");
    EXPECT_EQ(CreditCounter(3, ""), "3");
    EXPECT_EQ(CreditCounter(0, ""), "0") << "an empty counter takes a number";
    EXPECT_EQ(CreditCounter(1, "abc"), "1");
    EXPECT_EQ(CreditCounter(1, "12345"), "12346");
    EXPECT_EQ(CreditCounter(10, " 20"), "30") << "the label of the tithes in standard form";
}

TEST(CreditCounter, AnyCounter_UndoesItsDebit) {
    for (i32 stock = 1; stock <= 400; ++stock) {
        for (const i32 need : {1, 2, 9, 255}) {
            const std::string shown = std::to_string(stock);
            const auto debited = DebitCounter(need, shown);
            ASSERT_TRUE(debited.has_value());
            ASSERT_EQ(CreditCounter(need, *debited), shown);
        }
    }
}

TEST(StockOfCounter, Bounds_OverflowBeyondAnI16) {
    EXPECT_EQ(StockOfCounter("32767"), 32767);
    EXPECT_EQ(StockOfCounter("-32768"), -32768);
    EXPECT_EQ(StockOfCounter(""), 0);
    EXPECT_EQ(StockOfCounter("2.5"), 2);
    for (const char* text : {"32768", "-32769", "99999999999", "1e400"}) {
        EXPECT_EQ(FailureOf([&] { StockOfCounter(text); }), FailureKind::kOverflow) << text;
    }
}

}  // namespace
}  // namespace spellwick
