// Casts and counters beside the assist tools of today.
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/companion/assist_reports_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace std::chrono_literals;

constexpr std::array<i32, 14> kReportOfReagent{0, 5, 7, 1, 8, 3, 2, 6, 4, 100, 102, 101, 103, 104};

// A tool with the character's pack, from which each cast takes its cost.
class TodaysToolsTest : public AssistReportsTest {
  protected:
    void StartBesideTool(const std::string& title) {
        m_toolTitle = title;
        m_pack.fill(50);
        StartLinked();
    }

    // A click on a slot of the first circle, and what the game makes of it.
    void Cast(int slot, bool fizzles = false) {
        ClickSpell(slot);
        if (!fizzles) {
            for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
                m_pack.at(static_cast<std::size_t>(reagent)) -=
                    State().Spells(slot).Reagents(reagent);
            }
        }
    }
    void ReportCast(int slot) { Report(kAssistCast, slot + 1); }
    void ReportStockOf(int slot) {
        for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
            if (State().Spells(slot).Reagents(reagent) != 0) {
                Report(kAssistStock, kReportOfReagent.at(static_cast<std::size_t>(reagent)),
                       m_pack.at(static_cast<std::size_t>(reagent)));
            }
        }
    }
    // Time goes by, with a tick each second.
    void Wait(std::chrono::milliseconds time) {
        for (; time > 0ms; time -= 500ms) {
            m_now += 500ms;
            Tick(1);
        }
    }
    std::vector<std::string> Pack() const {
        std::vector<std::string> texts;
        for (std::size_t reagent = 1; reagent < m_pack.size(); ++reagent) {
            texts.push_back(std::to_string(m_pack.at(reagent)));
        }
        return texts;
    }

    std::array<int, 14> m_pack{};
};

TEST_F(TodaysToolsTest, ToolThatIsSilent_CastsArePaidAtTheClickOnce) {
    StartBesideTool("UOASSIST-TP-MSG-WND");
    Cast(kHeal);
    EXPECT_EQ(Counters(), Pack());
    EXPECT_THAT(Timers(), ElementsAre("timer 3"));
    Cast(kClumsy);
    EXPECT_EQ(Counters(), Pack());
}

TEST_F(TodaysToolsTest, FirstReport_OfACastThatTheClickHasPaid_CostsNothing) {
    StartBesideTool("Razor v1.9");
    Cast(kHeal);
    ReportCast(kHeal);
    Wait(3s);
    EXPECT_EQ(Counters(), Pack());
    EXPECT_THAT(Timers(), ElementsAre("timer 3"));
}

TEST_F(TodaysToolsTest, TrustedTool_WithoutStock_ThePayIsTakenASecondAfterTheReport) {
    StartBesideTool("Razor v1.9");
    Cast(kHeal);
    ReportCast(kHeal);
    ClickSpell(kClumsy);
    EXPECT_EQ(Counters(), Pack()) << "the report pays";
    ReportCast(kClumsy);
    EXPECT_EQ(Counters(), Pack());
    EXPECT_THAT(Timers(), testing::Contains("timer 0")) << "the countdown starts at the report";
    Wait(3s);
    EXPECT_EQ(Text("Reagent", 3), "49");
    EXPECT_EQ(Text("Reagent", 7), "49");
}

TEST_F(TodaysToolsTest, DebitThatWaits_IsTakenBeforeAnotherBagOrCharacterPays) {
    StartBesideTool("Razor v1.9");
    Report(kAssistStock, 200, 500);
    ClickSpell(kClumsy);
    ReportCast(kClumsy);
    Program().ClickBag(1);
    EXPECT_EQ(m_state.ReagentStock(3, 0), 49);
    EXPECT_EQ(m_state.ReagentStock(3, 1), 20);
    ClickSpell(kClumsy);
    ReportCast(kClumsy);
    SavePlayer(kBran);
    OpenClient(kBran);
    Tick(1);
    EXPECT_EQ(Saved(kMira, "BM 1"), "19");
    EXPECT_EQ(Saved(kBran, "BM 1"), "20");
}

class WaysToEnd : public TodaysToolsTest,
                  public testing::WithParamInterface<void (*)(Companion&)> {};

TEST_P(WaysToEnd, DebitThatWaits_IsSaved) {
    StartBesideTool("Razor v1.9");
    Report(kAssistStock, 200, 500);
    ClickSpell(kClumsy);
    ReportCast(kClumsy);
    GetParam()(Program());
    EXPECT_EQ(Saved(kMira, "BM 0"), "49");
}

INSTANTIATE_TEST_SUITE_P(All, WaysToEnd,
                         testing::Values([](Companion& program) { program.End(EndCause::kUser); },
                                         [](Companion& program) { program.SaveForLogOff(); },
                                         [](Companion& program) { program.SaveWithoutDisplay(); },
                                         [](Companion& program) {
                                             EXPECT_TRUE(program.SaveAfterFailure());
                                         }));

TEST_F(TodaysToolsTest, ReportThatNoClickFits_CountsNothing) {
    StartBesideTool("Razor Enhanced 0.8");
    Report(kAssistCast, 1);
    Report(kAssistCast, 117);
    Wait(3s);
    EXPECT_EQ(Counters(), FiftyLessOneAt({}));
    EXPECT_THAT(Timers(), IsEmpty());
}

// 200 casts, some of them fizzles that use nothing up, at the pace of a fast hand.
void MixedCasts(const std::function<void(int slot, bool fizzles, std::mt19937& random)>& cast) {
    std::mt19937 random(20261122);
    for (int number = 0; number < 200; ++number) {
        const int slot = std::uniform_int_distribution<int>(0, 7)(random);
        cast(slot, std::bernoulli_distribution(0.2)(random), random);
    }
}

TEST_F(TodaysToolsTest, TwoHundredCasts_BesideAToolThatReportsStock_EqualThePack) {
    StartBesideTool("Bran (Oak Hill) - Razor v1.9");
    m_pack.fill(500);
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        Report(kAssistStock, kReportOfReagent.at(static_cast<std::size_t>(reagent)), 500);
    }
    Wait(2s);
    MixedCasts([this](int slot, bool fizzles, std::mt19937& random) {
        Cast(slot, fizzles);
        ReportCast(slot);
        m_now += std::chrono::milliseconds(std::uniform_int_distribution<int>(0, 900)(random));
        // A fizzle uses nothing up, and this tool then tells what is there all the same.
        ReportStockOf(slot);
        Wait(std::chrono::milliseconds(std::uniform_int_distribution<int>(0, 2000)(random)));
    });
    Wait(3s);
    EXPECT_EQ(Counters(), Pack());
}

TEST_F(TodaysToolsTest, TwoHundredCasts_BesideAToolThatReportsNoStock_EqualWhatItReported) {
    StartBesideTool("Bran (Oak Hill) - Razor Enhanced 0.8.2");
    m_pack.fill(500);
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        State().ReagentStock(reagent, 0) = 500;
        Program().ShowCounter(reagent);
    }
    MixedCasts([this](int slot, bool /*fizzles*/, std::mt19937& random) {
        Cast(slot);
        m_now += std::chrono::milliseconds(std::uniform_int_distribution<int>(0, 9000)(random));
        ReportCast(slot);
    });
    EXPECT_EQ(Counters(), Pack());
}

TEST_F(TodaysToolsTest, TwoHundredCasts_BesideAToolThatReportsNothing_EqualWhatWasClicked) {
    StartBesideTool("UOASSIST-TP-MSG-WND");
    m_pack.fill(500);
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        State().ReagentStock(reagent, 0) = 500;
        Program().ShowCounter(reagent);
    }
    MixedCasts([this](int slot, bool /*fizzles*/, std::mt19937& /*random*/) {
        Cast(slot);
        Report(kAssistStats, 100, 90);
    });
    EXPECT_EQ(Counters(), Pack());
    EXPECT_EQ(m_state.CurrentMana, 100) << "its mana is hits";
}

TEST_F(TodaysToolsTest, Count_ToolThatDoesNotCount_IsOffAndSaysWhy) {
    StartBesideTool("Razor Enhanced 0.8");
    EXPECT_FALSE(CountEnabled());
    EXPECT_EQ(Shown().countReason, "Razor Enhanced 0.8 does not count when it is asked to");
    Report(kAssistStock, 3, 12);
    EXPECT_FALSE(CountEnabled());
    EXPECT_EQ(CountCaption(), "Count");
}

TEST_F(TodaysToolsTest, Count_ToolThatCounts_IsOn) {
    StartBesideTool("Razor v1.9");
    EXPECT_TRUE(CountEnabled());
    EXPECT_EQ(Shown().countReason, "");
    ClickCommand(kCount);
    EXPECT_EQ(CountCaption(), "Wait..");
    Report(kAssistStock, 3, 12);
    EXPECT_EQ(CountCaption(), "Count");
}

TEST_F(TodaysToolsTest, LinkMark_SaysWithWhomAndWhoPays) {
    StartBesideTool("Razor v1.9");
    EXPECT_THAT(Shown().linkText, HasSubstr("until it reports one"));
    EXPECT_FALSE(Shown().linkPays);
    TakeChanges();
    Report(kAssistStock, 200, 500);
    EXPECT_EQ(Shown().linkText, "Linked with Razor v1.9: casts, stock, mana");
    EXPECT_TRUE(Shown().linkPays);
    EXPECT_TRUE(TakeChanges().back().link);
    ShowTool(false);
    Tick(1);
    EXPECT_EQ(Shown().linkText, "No assist tool: casts are paid at the click");
    EXPECT_FALSE(Shown().linkPays);
}

TEST_F(TodaysToolsTest, LinkReport_TellsTheLastReportsAndWhoPays) {
    StartBesideTool("Razor v1.9");
    EXPECT_THAT(Program().LinkReport(), HasSubstr("Razor v1.9, since "));
    EXPECT_THAT(Program().LinkReport(), HasSubstr("cast none, stock none, mana none, skill none"));
    EXPECT_THAT(Program().LinkReport(), HasSubstr("until the tool reports a cast or stock"));
    Report(kAssistSkill, 49, 800);
    EXPECT_THAT(Program().LinkReport(), testing::Not(HasSubstr("skill none")));
    Report(kAssistStock, 200, 500);
    EXPECT_THAT(Program().LinkReport(), HasSubstr("Casts are paid when the tool reports them."));
    ShowTool(false);
    Tick(1);
    EXPECT_THAT(Program().LinkReport(), HasSubstr("No assist tool is running."));
}

}  // namespace
}  // namespace spellwick
