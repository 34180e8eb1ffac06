#include "model/bag_transfer.h"

#include <vector>

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {
namespace {

constexpr BagSide kLeft = BagSide::kLeft;
constexpr BagSide kRight = BagSide::kRight;

struct TransferRow {
    const char* name;
    BagSide side;
    const char* text;
    i16 leftBefore;
    i16 rightBefore;
    i16 leftAfter;
    i16 rightAfter;
    bool moves;
    bool refused;
};

void ExpectRows(const std::vector<TransferRow>& rows) {
    for (const TransferRow& row : rows) {
        StockTable stock;
        stock(5, 2) = row.leftBefore;
        stock(5, 7) = row.rightBefore;
        const TransferEntry entry =
            CommitTransfer(stock, 5, {.left = 2, .right = 7}, row.side, row.text);
        EXPECT_EQ(stock(5, 2), row.leftAfter) << row.name;
        EXPECT_EQ(stock(5, 7), row.rightAfter) << row.name;
        EXPECT_EQ(entry.moves, row.moves) << row.name;
        EXPECT_EQ(entry.refused, row.refused) << row.name;
    }
}

TEST(BagTransfer, Table_TheSignIsForTheBoxThatWasTypedIn) {
    ExpectRows({
        {"left fetches", kLeft, "+5", 10, 20, 15, 15, true, false},
        {"left fetches all", kLeft, "+20", 10, 20, 30, 0, true, false},
        {"left fetches too much", kLeft, "+21", 10, 20, 10, 20, true, true},
        {"left fetches five of three", kLeft, "+5", 10, 3, 10, 3, true, true},
        {"left gives", kLeft, "-5", 10, 20, 5, 25, true, false},
        {"left gives too much", kLeft, "-11", 10, 20, 10, 20, true, true},
        {"right fetches", kRight, "+5", 10, 20, 5, 25, true, false},
        {"right fetches too much", kRight, "+11", 10, 20, 10, 20, true, true},
        {"right gives", kRight, "-5", 10, 20, 15, 15, true, false},
        {"right gives too much", kRight, "-21", 10, 20, 10, 20, true, true},
        {"plus nought", kLeft, "+0", 10, 20, 10, 20, true, false},
        {"plus alone", kLeft, "+", 10, 20, 10, 20, true, false},
        {"minus alone", kRight, "-", 10, 20, 10, 20, true, false},
        {"minus alone below nought", kLeft, "-", -1, 20, -1, 20, true, true},
        {"more than four digits count", kLeft, "+12345", 0, 20000, 12345, 7655, true, false},
        {"half to even", kLeft, "+2.5", 10, 20, 12, 18, true, false},
        {"beyond every cell", kLeft, "+99999999999999999999", 10, 20, 10, 20, true, true},
        {"letters behind the sign", kLeft, "+abc", 10, 20, 10, 20, true, false},
        {"left number", kLeft, "77", 10, 20, 77, 20, false, false},
        {"right number", kRight, "77", 10, 20, 10, 77, false, false},
        {"number before a sign", kLeft, "7+3", 10, 20, 7, 20, false, false},
        {"nothing", kLeft, "", 10, 20, 0, 20, false, false},
        {"letters", kRight, "abc", 10, 20, 10, 0, false, false},
        {"negative behind a blank", kLeft, " -5", 10, 20, -5, 20, false, false},
    });
}

// covers ODDITY(bag-four-digits)
TEST(BagTransfer, Oddity_PlainCountStopsAtFourCharacters) {
    ExpectRows({
        {"five digits", kLeft, "12345", 10, 20, 1234, 20, false, false},
        {"ten digits", kRight, "9999999999", 10, 20, 10, 9999, false, false},
    });
}

// covers ODDITY(backward-move)
TEST(BagTransfer, Oddity_PlusMinus_MovesBackwardsBelowNought) {
    ExpectRows({
        {"left, plus minus", kLeft, "+-5", 3, 20, -2, 25, true, false},
        {"right, plus minus", kRight, "+-5", 10, 3, 15, -2, true, false},
        {"left, minus minus", kLeft, "--5", 10, 3, 15, -2, true, false},
    });
}

// covers ODDITY(same-bag-move)
TEST(BagTransfer, Oddity_SameBag_IsTakenAndChangesNothing) {
    StockTable stock;
    stock(1, 4) = 5;
    for (const BagSide side : {kLeft, kRight}) {
        for (const char* text : {"+5", "-5"}) {
            const TransferEntry entry =
                CommitTransfer(stock, 1, {.left = 4, .right = 4}, side, text);
            EXPECT_TRUE(entry.moves) << text;
            EXPECT_FALSE(entry.refused) << text;
            EXPECT_EQ(stock(1, 4), 5) << text;
        }
        EXPECT_TRUE(CommitTransfer(stock, 1, {.left = 4, .right = 4}, side, "+6").refused);
    }
}

TEST(BagTransfer, NoBag_FailsAsSubscriptOnlyWhereItIsNeeded) {
    StockTable stock;
    const BagPair bags{.left = 3, .right = -1};
    EXPECT_EQ(FailureOf([&] { CommitTransfer(stock, 1, bags, kLeft, "+1"); }),
              FailureKind::kSubscript);
    EXPECT_EQ(FailureOf([&] { CommitTransfer(stock, 1, bags, kRight, "8"); }),
              FailureKind::kSubscript);
    EXPECT_EQ(FailureOf([&] { CommitTransfer(stock, 1, bags, kLeft, "8"); }), std::nullopt);
    EXPECT_EQ(stock(1, 3), 8);
}

TEST(BagTransfer, FullCell_Overflows) {
    StockTable stock;
    stock(1, 0) = 32767;
    stock(1, 1) = 10;
    EXPECT_EQ(FailureOf([&] { CommitTransfer(stock, 1, {.left = 0, .right = 1}, kLeft, "+1"); }),
              FailureKind::kOverflow);
    EXPECT_EQ(FailureOf([&] { CommitTransfer(stock, 1, {.left = 0, .right = 1}, kRight, "9e9"); }),
              FailureKind::kOverflow);
}

TEST(MoveOne, Arrows_MoveOneUnitOrNothing) {
    StockTable stock;
    stock(13, 0) = 1;
    const BagPair bags{.left = 0, .right = 9};
    EXPECT_TRUE(MoveOne(stock, 13, bags, kRight));
    EXPECT_EQ(stock(13, 0), 0);
    EXPECT_EQ(stock(13, 9), 1);
    EXPECT_FALSE(MoveOne(stock, 13, bags, kRight));
    EXPECT_EQ(stock(13, 9), 1);
    EXPECT_TRUE(MoveOne(stock, 13, bags, kLeft));
    EXPECT_EQ(stock(13, 0), 1);
    stock(13, 9) = -4;
    EXPECT_FALSE(MoveOne(stock, 13, bags, kLeft));
    EXPECT_TRUE(MoveOne(stock, 13, {.left = 0, .right = 0}, kLeft));
    EXPECT_EQ(stock(13, 0), 1);
}

TEST(MoveOne, NoBag_FailsAsSubscript) {
    StockTable stock;
    stock(1, 0) = 5;
    EXPECT_EQ(FailureOf([&] { MoveOne(stock, 1, {.left = 0, .right = -1}, kRight); }),
              FailureKind::kSubscript);
    EXPECT_EQ(FailureOf([&] { MoveOne(stock, 1, {.left = 0, .right = -1}, kLeft); }),
              FailureKind::kSubscript);
}

TEST(LacksTwoBags, Table) {
    EXPECT_FALSE(LacksTwoBags({.left = 0, .right = 1}));
    EXPECT_TRUE(LacksTwoBags({.left = 3, .right = 3}));
    EXPECT_TRUE(LacksTwoBags({.left = -1, .right = 1}));
    EXPECT_TRUE(LacksTwoBags({.left = 0, .right = -1}));
}

TEST(TotalOfReagent, SumOfTenBags_OverflowsBeyondAnI16) {
    StockTable stock;
    for (i32 bag = 0; bag < kBagCount; ++bag) {
        stock(2, bag) = static_cast<i16>(bag + 1);
        stock(3, bag) = 3276;
    }
    EXPECT_EQ(TotalOfReagent(stock, 1), 0);
    EXPECT_EQ(TotalOfReagent(stock, 2), 55);
    EXPECT_EQ(TotalOfReagent(stock, 3), 32760);
    stock(3, 0) = 3284;
    EXPECT_EQ(FailureOf([&] { TotalOfReagent(stock, 3); }), FailureKind::kOverflow);
}

TEST(CountOfBox, WholeNumber_NotFourCharacters) {
    EXPECT_EQ(CountOfBox("999"), 999);
    EXPECT_EQ(CountOfBox("12345"), 12345);
    EXPECT_EQ(CountOfBox(""), 0);
    EXPECT_EQ(FailureOf([] { CountOfBox("40000"); }), FailureKind::kOverflow);
}

TEST(BagTransfer, Texts_AreTheKnownOnes) {
    EXPECT_EQ(kSelectTwoBags,
              "Please select two different containers before transferring reagents");
    EXPECT_EQ(kNotThatManyToMove, "You do not have that amount of reagents to move");
}

}  // namespace
}  // namespace spellwick
