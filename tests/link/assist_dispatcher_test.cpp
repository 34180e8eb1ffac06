// What the reports of stock, skills and mana do, and the failures of all.
#include <limits>
#include <map>
#include <random>

#include <gmock/gmock.h>

#include "tests/link/assist_dispatch_fixture.h"
#include "tests/support/assist_rows.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(AssistDispatch, StockReport_EveryReagent_GoesToItsCounterAndCell) {
    m_state.CurrentReagentBag = 4;
    i32 count = 20;
    for (const ReagentRow& row : kReagentRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(FactsOfReagent(row.reagent).name, row.name);
        StockTable expected = m_state.ReagentStock;
        expected(row.reagent, 4) = static_cast<i16>(++count);
        EXPECT_THAT(
            Report(0x52D, row.wParam, count),
            ElementsAre("counter " + std::to_string(row.reagent) + ' ' + std::to_string(count),
                        "amounts", "yield", "caption Count", "enable"));
        EXPECT_EQ(m_state.ReagentStock, expected);
    }
}

TEST_F(AssistDispatch, StockReport_EveryOtherNumber_ChangesNothingAndReturnsTheButton) {
    std::map<i32, i32> known{{200, 14}};
    for (const ReagentRow& row : kReagentRows) {
        known[row.wParam] = row.reagent;
    }
    const SharedState before = m_state;
    for (i32 number = -300; number <= 400; ++number) {
        if (!known.contains(number)) {
            SCOPED_TRACE(number);
            EXPECT_THAT(Report(0x52D, number, 77), ElementsAre("caption Count", "enable"));
        }
    }
    for (const i32 number :
         {std::numeric_limits<i32>::min(), std::numeric_limits<i32>::max(), 9, 99, 105, 201}) {
        EXPECT_THAT(Report(0x52D, number, 1 << 20), ElementsAre("caption Count", "enable"));
    }
    EXPECT_EQ(m_state.ReagentStock, before.ReagentStock);
    EXPECT_EQ(m_state.CurrentTithing, 0);
}

TEST_F(AssistDispatch, StockReport_OfTheValueInTheCell_ChangesNoTextAndReturnsTheButton) {
    m_state.ReagentStock(3, 0) = 55;
    EXPECT_THAT(Report(0x52D, 1, 55), ElementsAre("caption Count", "enable"));
    EXPECT_EQ(m_state.ReagentStock(3, 0), 55);
}

TEST_F(AssistDispatch, StockReport_WhileNotLinked_SearchesAfterTheYieldAndBeforeTheButton) {
    m_state.AssistLinked = false;
    EXPECT_THAT(Report(0x52D, 1, 5), ElementsAre("counter 3 5", "amounts", "yield", "search",
                                                 "caption Count", "enable"));
    EXPECT_THAT(Report(0x52D, 9, 5), ElementsAre("search", "caption Count", "enable"));
}

TEST_F(AssistDispatch, StockReport_LargestAndSmallestThatFit_AreStored) {
    for (const i32 count : {32767, -32768, 0}) {
        Report(0x52D, 8, count);
        EXPECT_EQ(m_state.ReagentStock(4, 0), count);
    }
}

TEST_F(AssistDispatch, StockReport_ThatDoesNotFit_FailsAndShowsNothing) {
    for (const i32 count :
         {32768, -32769, std::numeric_limits<i32>::max(), std::numeric_limits<i32>::min()}) {
        EXPECT_EQ(FailureOfReport(0x52D, 1, count), FailureKind::kOverflow);
        EXPECT_EQ(m_state.ReagentStock(3, 0), 0);
        EXPECT_THAT(m_view.log, IsEmpty());
    }
}

TEST_F(AssistDispatch, StockReport_BagOutsideTheTable_FailsForReagentsOnly) {
    for (const i16 bag : {i16{-1}, i16{10}}) {
        m_state.CurrentReagentBag = bag;
        EXPECT_EQ(FailureOfReport(0x52D, 1, 5), FailureKind::kSubscript);
        EXPECT_EQ(FailureOfReport(0x52D, 200, 5), std::nullopt);
        EXPECT_EQ(FailureOfReport(0x52D, 9, 5), std::nullopt);
    }
}

// covers ODDITY(report-bag)
TEST_F(AssistDispatch, StockReport_Oddity_GoesToWhicheverBagIsSelected) {
    m_state.CurrentReagentBag = 2;
    Report(0x52D, 5, 40);
    m_state.CurrentReagentBag = 7;
    Report(0x52D, 5, 41);
    EXPECT_EQ(m_state.ReagentStock(1, 2), 40);
    EXPECT_EQ(m_state.ReagentStock(1, 7), 41);
}

TEST_F(AssistDispatch, StockReport_BagChangedDuringTheYield_EachReportIsWholeInItsBag) {
    m_view.duringYield = [this] {
        if (m_state.CurrentReagentBag == 0) {
            m_state.CurrentReagentBag = 1;
            m_dispatcher.Dispatch({0x52D, 2, 9});
        }
    };
    Report(0x52D, 1, 8);
    EXPECT_EQ(m_state.ReagentStock(3, 0), 8);
    EXPECT_EQ(m_state.ReagentStock(6, 1), 9);
}

// covers ODDITY(tithes-report)
TEST_F(AssistDispatch, TithesReport_Oddity_ShowsThePointsAndLeavesTheAmounts) {
    EXPECT_THAT(Report(0x52D, 200, 500), ElementsAre("tithes 500", "caption Count", "enable"));
    EXPECT_THAT(Report(0x52D, 200, 500), ElementsAre("tithes 500", "caption Count", "enable"));
    EXPECT_EQ(m_state.CurrentTithing, 500);
}

TEST_F(AssistDispatch, TithesReport_TakesAllThirtyTwoBits) {
    for (const i32 points : {32767, 32768, 40000, 100000, std::numeric_limits<i32>::max(), -1,
                             std::numeric_limits<i32>::min()}) {
        EXPECT_THAT(Report(0x52D, 200, points),
                    ElementsAre("tithes " + std::to_string(points), "caption Count", "enable"));
        EXPECT_EQ(m_state.CurrentTithing, points);
    }
}

TEST_F(AssistDispatch, Announcement_SearchesOnlyIfNotLinked) {
    EXPECT_THAT(Report(0x52F, 0x3FFFFFFF, -1), IsEmpty());
    m_state.AssistLinked = false;
    EXPECT_THAT(Report(0x52F, 0, 0), ElementsAre("search"));
}

TEST_F(AssistDispatch, MageryReport_IsNotScaled) {
    for (const i32 points : {0, 98, 120, 32767, -32768}) {
        EXPECT_THAT(Report(0x530, points, 7),
                    ElementsAre("skill " + std::to_string(points), "chances"));
        EXPECT_EQ(m_state.Magery, points);
    }
}

TEST_F(AssistDispatch, MageryReport_ThatDoesNotFit_FailsAndKeepsTheSkill) {
    m_state.Magery = 90;
    for (const i32 points : {32768, -32769}) {
        EXPECT_EQ(FailureOfReport(0x530, points, 0), FailureKind::kOverflow);
        EXPECT_EQ(m_state.Magery, 90);
        EXPECT_THAT(m_view.log, IsEmpty());
    }
}

TEST_F(AssistDispatch, StatsReport_StoresBothAndShowsThem) {
    EXPECT_THAT(Report(0x531, 95, 60), ElementsAre("int 95", "mana", "chances"));
    EXPECT_EQ(m_state.Intelligence, 95);
    EXPECT_EQ(m_state.CurrentMana, 60);
    EXPECT_EQ(m_dispatcher.LastMana(), 60);
}

TEST_F(AssistDispatch, StatsReport_ThatDoesNotFit_Fails) {
    for (const i32 value : {32768, -32769}) {
        EXPECT_EQ(FailureOfReport(0x531, value, 0), FailureKind::kOverflow);
        EXPECT_EQ(FailureOfReport(0x531, 0, value), FailureKind::kOverflow);
        EXPECT_EQ(m_dispatcher.LastMana(), 0);
        EXPECT_THAT(m_view.log, IsEmpty());
    }
    EXPECT_EQ(FailureOfReport(0x531, 32767, -32768), std::nullopt);
}

struct MeditationRow {
    const char* name = "";
    bool on = false;
    i16 level = 0;
    std::optional<i32> last;  // the report before
    i32 mana = 0;
    bool armed = false;
};

constexpr MeditationRow kMeditationRows[] = {
    {"below and falling", true, 25, 30, 20, true},
    {"switched off", false, 25, 30, 20, false},
    {"standing", true, 25, 20, 20, false},
    {"rising", true, 25, 19, 20, false},
    {"at the level", true, 20, 30, 20, false},
    {"one below the level", true, 21, 30, 20, true},
    {"falling by one", true, 25, 21, 20, true},
    {"above the level", true, 10, 30, 20, false},
    {"first report", true, 25, std::nullopt, 20, false},
    {"first report without mana", true, 25, std::nullopt, 0, false},
    {"first report, mana negative", true, 25, std::nullopt, -1, true},
    {"no mana before", true, 25, 0, 0, false},
    {"all negative", true, -1, -2, -3, true},
};

TEST_F(AssistDispatch, StatsReport_Meditation_IsArmedBelowTheLevelAndFallingOnly) {
    for (const MeditationRow& row : kMeditationRows) {
        SCOPED_TRACE(row.name);
        AssistDispatcher dispatcher(m_state, m_view, m_view, m_sink);
        const auto report = [&](i32 mana) {
            EXPECT_EQ(dispatcher.Dispatch({0x531, 100, mana}), std::optional<i32>(0));
            return m_view.TakeLog();
        };
        if (row.last) {
            m_state.Meditate = false;
            report(*row.last);
        }
        m_state.Meditate = row.on;
        m_state.MeditateLevel = row.level;
        const auto log = report(row.mana);
        if (row.armed) {
            EXPECT_THAT(log, ElementsAre("meditate", "int 100", "mana", "chances"));
        } else {
            EXPECT_THAT(log, ElementsAre("int 100", "mana", "chances"));
        }
        EXPECT_EQ(dispatcher.LastMana(), row.mana);
    }
}

TEST_F(AssistDispatch, StatsReport_SameManaAgain_DoesNotArmASecondTime) {
    m_state.Meditate = true;
    m_state.MeditateLevel = 25;
    EXPECT_THAT(Report(0x531, 100, 30), testing::Not(testing::Contains("meditate")));
    EXPECT_THAT(Report(0x531, 100, 20), testing::Contains("meditate"));
    EXPECT_THAT(Report(0x531, 100, 20), testing::Not(testing::Contains("meditate")));
}

struct SkillRow {
    i32 number;
    i16 SharedState::*cell;
    const char* name;
};

constexpr SkillRow kSkillRows[] = {
    {16, &SharedState::EvalInt, "EvalInt"},
    {32, &SharedState::SpiritSpeak, "SpiritSpeak"},
    {49, &SharedState::Necro, "Necro"},
    {51, &SharedState::Chivalry, "Chivalry"},
};

std::array<i16, 5> Skills(const SharedState& state) {
    return {state.EvalInt, state.SpiritSpeak, state.Necro, state.Chivalry, state.Magery};
}

// covers ODDITY(skill-report)
TEST_F(AssistDispatch, SkillReport_Oddity_FillsItsCellAndShowsNothing) {
    i16 points = 40;
    for (const SkillRow& row : kSkillRows) {
        SCOPED_TRACE(row.name);
        SharedState expected = m_state;
        expected.*row.cell = ++points;
        EXPECT_THAT(Report(0x532, row.number, points * 10), IsEmpty());
        EXPECT_EQ(Skills(m_state), Skills(expected));
    }
}

TEST_F(AssistDispatch, SkillReport_EveryOtherSkill_StoresNothingWhateverItsValue) {
    for (i32 skill = -10; skill < 300; ++skill) {
        if (skill != 16 && skill != 32 && skill != 49 && skill != 51) {
            EXPECT_THAT(Report(0x532, skill, std::numeric_limits<i32>::max()), IsEmpty());
        }
    }
    EXPECT_EQ(Skills(m_state), (std::array<i16, 5>{}));
}

TEST_F(AssistDispatch, SkillReport_TenthsAreCutOffTowardZero) {
    const std::pair<i32, i16> rows[] = {{999, 99}, {1000, 100}, {1009, 100},     {9, 0},
                                        {-9, 0},   {-19, -1},   {327679, 32767}, {-327689, -32768}};
    for (const auto& [tenths, points] : rows) {
        Report(0x532, 51, tenths);
        EXPECT_EQ(m_state.Chivalry, points) << tenths;
    }
    for (const i32 tenths :
         {327680, -327690, std::numeric_limits<i32>::max(), std::numeric_limits<i32>::min()}) {
        EXPECT_EQ(FailureOfReport(0x532, 51, tenths), FailureKind::kOverflow) << tenths;
    }
}

TEST_F(AssistDispatch, EveryOtherMessage_IsLeftToTheOrdinaryHandling) {
    for (std::uint32_t number = 0; number < 0x1000; ++number) {
        if (number < 0x52D || number > 0x532) {
            EXPECT_EQ(m_dispatcher.Dispatch({number, 1, 1}), std::nullopt) << number;
        }
    }
    EXPECT_EQ(m_dispatcher.OnMessage({0x535, 100, 100}), std::nullopt);
    EXPECT_EQ(m_dispatcher.OnMessage({0xFFFFFFFFU, 0, 0}), std::nullopt);
    EXPECT_THAT(m_view.log, IsEmpty());
}

TEST_F(AssistDispatch, Failure_GoesToTheSinkAndIsAnsweredWithZero) {
    m_state.Spells.GrowTo(kLastRow);
    EXPECT_EQ(m_dispatcher.OnMessage({0x530, 40000, 0}), std::optional<i32>(0));
    EXPECT_THAT(m_sink.actions, ElementsAre("handling a report of the assist tool"));
}

TEST_F(AssistDispatch, Failure_BeforeTheSpellTableIsRead_IsIgnored) {
    EXPECT_EQ(m_dispatcher.OnMessage({0x530, 40000, 0}), std::optional<i32>(0));
    EXPECT_EQ(m_dispatcher.OnMessage({0x52E, 0, 0}), std::optional<i32>(0));
    EXPECT_THAT(m_sink.actions, IsEmpty());
}

TEST_F(AssistDispatch, ManyMixedReports_EachIsTakenOnce) {
    std::mt19937 random(7);
    std::array<i16, 14> expected{};
    for (int i = 0; i < 20000; ++i) {
        const ReagentRow& row = kReagentRows[random() % std::size(kReagentRows)];
        const i16 count = static_cast<i16>(random() % 300);
        expected[static_cast<std::size_t>(row.reagent)] = count;
        Report(0x52D, row.wParam, count);
    }
    for (const ReagentRow& row : kReagentRows) {
        EXPECT_EQ(m_state.ReagentStock(row.reagent, 0),
                  expected[static_cast<std::size_t>(row.reagent)]);
    }
}

}  // namespace
}  // namespace spellwick
