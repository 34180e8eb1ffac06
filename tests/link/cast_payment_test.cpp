#include "link/cast_payment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

constexpr i32 kBlackPearl = 6;
constexpr i32 kGarlic = 5;

// A tool as it is today: places within the circle, stock at each change, and no trust at first.
AssistTool TodaysTool() {
    return {.name = "Tool", .castsWithinCircle = true};
}

class CastPaymentTest : public testing::Test {
  protected:
    CastPaymentTest() {
        m_state.Spells.GrowTo(96);
        m_state.AssistLinked = true;
        for (const i32 row : {0, 8, 17, 64}) {
            m_state.Spells(row).Reagents(kBlackPearl) = 1;
        }
        m_state.Spells(17).Reagents(kGarlic) = 1;
    }

    // A click on a spell: the row is paid as the answer says.
    bool Click(i32 row) {
        const bool pays = m_payment.PaysAtClick();
        m_payment.NoteClick(row, pays);
        return pays;
    }

    SharedState m_state;
    CastPayment::Time m_now = CastPayment::Time() + 1h;
    CastPayment m_payment{m_state, [this] { return m_now; }};
};

TEST_F(CastPaymentTest, PaysAtClick_WithoutATool_Yes) {
    m_state.AssistLinked = false;
    EXPECT_TRUE(m_payment.PaysAtClick());
}

TEST_F(CastPaymentTest, PaysAtClick_TrustedTool_NoFromTheStart) {
    EXPECT_FALSE(m_payment.PaysAtClick());
    m_payment.Follow(TodaysTool());
    m_payment.Follow({.name = "trusted", .isTrustedAtOnce = true});
    EXPECT_FALSE(m_payment.PaysAtClick());
}

TEST_F(CastPaymentTest, PaysAtClick_AnyOtherTool_UntilItsFirstReportOfACastOrOfStock) {
    m_payment.Follow(TodaysTool());
    EXPECT_TRUE(m_payment.PaysAtClick());
    EXPECT_TRUE(m_payment.TakeReport(0));
    EXPECT_FALSE(m_payment.PaysAtClick());

    m_payment.Follow(TodaysTool());
    EXPECT_TRUE(m_payment.PaysAtClick()) << "the trust is that of the tool before";
    m_payment.NoteStock(kGarlic);
    EXPECT_FALSE(m_payment.PaysAtClick());
}

TEST_F(CastPaymentTest, PaysAtClick_ToolThatReportsNoCasts_Always) {
    AssistTool silent = TodaysTool();
    silent.reportsCasts = false;
    m_payment.Follow(silent);
    m_payment.NoteStock(kGarlic);
    EXPECT_FALSE(m_payment.TakeReport(0));
    EXPECT_TRUE(m_payment.PaysAtClick());
}

TEST_F(CastPaymentTest, TakeReport_OfAClickThatHasPaid_IsNotPaidASecondTime) {
    m_payment.Follow(TodaysTool());
    EXPECT_TRUE(Click(0));
    EXPECT_FALSE(m_payment.TakeReport(0));
    EXPECT_FALSE(Click(0));
    EXPECT_TRUE(m_payment.TakeReport(0));
}

TEST_F(CastPaymentTest, TakeReport_TwoClicksBeforeTheFirstReport_BothHavePaid) {
    m_payment.Follow(TodaysTool());
    Click(0);
    m_now += 2s;
    Click(8);
    EXPECT_FALSE(m_payment.TakeReport(0));
    EXPECT_FALSE(m_payment.TakeReport(8));
    EXPECT_TRUE(m_payment.TakeReport(8));
}

TEST_F(CastPaymentTest, TakeReport_TenSecondsAfterTheClick_IsAnotherCast) {
    m_payment.Follow(TodaysTool());
    Click(0);
    m_now += 10s;
    EXPECT_TRUE(m_payment.TakeReport(0));
}

TEST_F(CastPaymentTest, RowOfReport_WithinTheCircle_IsThatOfTheLastClickThatFits) {
    m_payment.Follow(TodaysTool());
    EXPECT_EQ(m_payment.RowOfReport(1), std::nullopt) << "nothing has been clicked";
    Click(8);
    EXPECT_EQ(m_payment.RowOfReport(1), 8);
    EXPECT_EQ(m_payment.RowOfReport(2), std::nullopt);
    EXPECT_EQ(m_payment.RowOfReport(9), std::nullopt) << "an absolute number";
    Click(17);
    EXPECT_EQ(m_payment.RowOfReport(1), std::nullopt);
    EXPECT_EQ(m_payment.RowOfReport(2), 17);
    m_now += 10s;
    EXPECT_EQ(m_payment.RowOfReport(2), std::nullopt) << "the click is too old";
}

TEST_F(CastPaymentTest, RowOfReport_EachPlaceOfEachBook) {
    m_payment.Follow(TodaysTool());
    for (i32 row = 0; row < 64; ++row) {
        Click(row);
        for (i32 place = 0; place <= 18; ++place) {
            EXPECT_EQ(m_payment.RowOfReport(place).has_value(), place == row % 8 + 1)
                << row << ' ' << place;
        }
    }
    // The books of the game are in another order than the table.
    struct Place {
        i32 row;
        i32 place;
    };
    for (const Place& at :
         {Place{72, 1}, Place{64, 4}, Place{95, 17}, Place{80, 1}, Place{82, 9}, Place{84, 10}}) {
        Click(at.row);
        EXPECT_EQ(m_payment.RowOfReport(at.place), at.row);
        EXPECT_EQ(m_payment.RowOfReport(at.place == 1 ? 2 : at.place - 1), std::nullopt);
    }
    Click(90);  // a spell of the player's own stands in no book
    for (i32 place = 0; place <= 18; ++place) {
        EXPECT_EQ(m_payment.RowOfReport(place), std::nullopt) << place;
    }
}

TEST_F(CastPaymentTest, RowOfReport_Absolute_IsTheSpellItself) {
    AssistTool tool = TodaysTool();
    tool.castsWithinCircle = false;
    m_payment.Follow(tool);
    EXPECT_EQ(m_payment.RowOfReport(1), 0);
    EXPECT_EQ(m_payment.RowOfReport(64), 63);
    EXPECT_EQ(m_payment.RowOfReport(104), 64);
    EXPECT_EQ(m_payment.RowOfReport(201), 80);
    for (const i32 number : {0, -1, 65, 100, 118, 211, 250, 401}) {
        EXPECT_EQ(m_payment.RowOfReport(number), std::nullopt) << number;
    }
}

TEST_F(CastPaymentTest, HoldDebit_TrustedToolOrOneWithoutStock_IsTakenAtOnce) {
    EXPECT_FALSE(m_payment.HoldDebit(0));
    AssistTool tool = TodaysTool();
    tool.reportsStock = false;
    m_payment.Follow(tool);
    EXPECT_FALSE(m_payment.HoldDebit(0));
    EXPECT_THAT(m_payment.TakeDueDebits(true), IsEmpty());
}

TEST_F(CastPaymentTest, HoldDebit_SpellWithoutReagents_IsTakenAtOnce) {
    m_payment.Follow(TodaysTool());
    EXPECT_FALSE(m_payment.HoldDebit(80));
}

TEST_F(CastPaymentTest, HoldDebit_NoStockIsReported_IsTakenAfterASecond) {
    m_payment.Follow(TodaysTool());
    EXPECT_TRUE(m_payment.HoldDebit(0));
    m_now += 1s;
    EXPECT_THAT(m_payment.TakeDueDebits(), IsEmpty());
    m_now += 1ms;
    EXPECT_THAT(m_payment.TakeDueDebits(), ElementsAre(0));
    EXPECT_THAT(m_payment.TakeDueDebits(true), IsEmpty()) << "it is taken once";
}

TEST_F(CastPaymentTest, HoldDebit_StockOfAReagentComesBehind_IsNotTaken) {
    m_payment.Follow(TodaysTool());
    EXPECT_TRUE(m_payment.HoldDebit(17));
    m_now += 900ms;
    m_payment.NoteStock(kGarlic);
    m_now += 10s;
    EXPECT_THAT(m_payment.TakeDueDebits(), IsEmpty());
}

TEST_F(CastPaymentTest, HoldDebit_StockOfAReagentCameBefore_IsNotTaken) {
    m_payment.Follow(TodaysTool());
    m_payment.NoteStock(kBlackPearl);
    m_now += 1s;
    EXPECT_TRUE(m_payment.HoldDebit(0));
    m_now += 10s;
    EXPECT_THAT(m_payment.TakeDueDebits(true), IsEmpty());
    m_payment.NoteStock(kBlackPearl);
    m_now += 1001ms;
    EXPECT_TRUE(m_payment.HoldDebit(0));
    EXPECT_THAT(m_payment.TakeDueDebits(true), ElementsAre(0));
}

TEST_F(CastPaymentTest, HoldDebit_StockOfSomethingElse_DoesNotCount) {
    m_payment.Follow(TodaysTool());
    m_payment.NoteStock(kGarlic);
    m_payment.NoteStock(0);
    EXPECT_TRUE(m_payment.HoldDebit(0));
    m_payment.NoteStock(kGarlic);
    EXPECT_THAT(m_payment.TakeDueDebits(true), ElementsAre(0));
}

TEST_F(CastPaymentTest, HoldDebit_SeveralWait_ThoseThatStockMakesUpForGo) {
    m_payment.Follow(TodaysTool());
    m_state.Spells(3).Reagents(1) = 1;
    EXPECT_TRUE(m_payment.HoldDebit(0));
    EXPECT_TRUE(m_payment.HoldDebit(3));
    EXPECT_TRUE(m_payment.HoldDebit(64));
    m_payment.NoteStock(kBlackPearl);
    EXPECT_THAT(m_payment.TakeDueDebits(true), ElementsAre(3));
}

}  // namespace
}  // namespace spellwick
