// What the reports of casts do.
#include <limits>
#include <map>

#include <gmock/gmock.h>

#include "tests/link/assist_dispatch_fixture.h"
#include "tests/support/assist_rows.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(MapSpellNumber, EveryNumber_IsItsRowOrUnknown) {
    std::map<i32, i32> table;
    for (const SpellRow& row : kSpellRows) {
        table[row.tool] = row.ours;
    }
    for (i32 number = -300; number <= 600; ++number) {
        const auto found = table.find(number);
        const auto expected = found == table.end() ? std::nullopt : std::optional(found->second);
        EXPECT_EQ(MapSpellNumber(number), expected) << number;
    }
}

TEST_F(AssistDispatch, CastReport_UpToOneHundred_DebitsTheSpellOneLess) {
    for (i32 number = 1; number <= 97; ++number) {
        EXPECT_THAT(Report(0x52E, number, 12345),
                    ElementsAre("debit " + std::to_string(number - 1),
                                "timer " + std::to_string(number - 1)));
    }
    EXPECT_THAT(Report(0x52E, 1, 0), ElementsAre("debit 0", "timer 0"));
    EXPECT_THAT(Report(0x52E, 64, 0), ElementsAre("debit 63", "timer 63"));
}

TEST_F(AssistDispatch, CastReport_BeyondTheLastSpell_Fails) {
    for (const i32 number : {98, 99, 100}) {
        EXPECT_EQ(FailureOfReport(0x52E, number, 0), FailureKind::kSubscript);
        EXPECT_THAT(m_view.TakeLog(), ElementsAre("debit " + std::to_string(number - 1)));
    }
}

// covers ODDITY(reported-spell-before)
TEST_F(AssistDispatch, CastReport_Oddity_AboveOneHundredDebitsTheSpellBefore) {
    for (const SpellRow& row : kSpellRows) {
        EXPECT_THAT(Report(0x52E, row.tool, 0), ElementsAre("debit " + std::to_string(row.ours - 1),
                                                            "timer " + std::to_string(row.ours)))
            << row.tool;
    }
    EXPECT_THAT(Report(0x52E, 104, 0), ElementsAre("debit 63", "timer 64"));
    EXPECT_THAT(Report(0x52E, 201, 0), ElementsAre("debit 79", "timer 80"));
}

// covers ODDITY(unknown-spell-number)
TEST_F(AssistDispatch, CastReport_Oddity_UnknownNumberShowsABoxAndFails) {
    for (i32 number = 118; number < 250; ++number) {
        if (number > 200 && number <= 210) {
            continue;
        }
        SCOPED_TRACE(number);
        EXPECT_EQ(FailureOfReport(0x52E, number, 0), FailureKind::kSubscript);
        EXPECT_THAT(m_view.TakeLog(),
                    ElementsAre("box Unsupported Necromancer or Paladin spell number " +
                                    std::to_string(number) + " has been cast.",
                                "debit -1"));
    }
}

TEST_F(AssistDispatch, CastReport_ZeroOrNegative_FailsWithoutABox) {
    for (const i32 number : {0, -1, -5, -32767}) {
        EXPECT_EQ(FailureOfReport(0x52E, number, 0), FailureKind::kSubscript) << number;
        EXPECT_THAT(m_view.TakeLog(), ElementsAre("debit " + std::to_string(number - 1)));
    }
    for (const i32 number : {-32768, -100000, std::numeric_limits<i32>::min()}) {
        EXPECT_EQ(FailureOfReport(0x52E, number, 0), FailureKind::kOverflow) << number;
        EXPECT_THAT(m_view.TakeLog(), IsEmpty());
    }
}

TEST_F(AssistDispatch, CastReport_FromTwoHundredAndFifty_OnlySearchesIfNotLinked) {
    for (const i32 number : {250, 251, 401, 1000, std::numeric_limits<i32>::max()}) {
        m_state.AssistLinked = true;
        EXPECT_THAT(Report(0x52E, number, 0), IsEmpty());
        m_state.AssistLinked = false;
        EXPECT_THAT(Report(0x52E, number, 0), ElementsAre("search"));
    }
}

// covers ODDITY(debit-twice)
TEST_F(AssistDispatch, CastReport_Oddity_DebitsAlsoWhileNotLinkedThenSearches) {
    m_state.AssistLinked = false;
    EXPECT_THAT(Report(0x52E, 5, 0), ElementsAre("debit 4", "search"));
}

}  // namespace
}  // namespace spellwick
