// The real program beside the assist tools of today, which the practice tool pretends to be.
#include <string>

#include <gtest/gtest.h>

#include "tests/end_to_end/tool_desk.h"

namespace spellwick::testing_support {
namespace {

constexpr int kHeal = 3;

class TodaysTools : public ToolDesk {
  protected:
    void StartWith(const std::string& role, const char* title) {
        PrepareMage(kMira, 10);
        StartGame();
        TellGame("login 1");
        StartTool(role, title);
        StartSpellwickLinked();
    }
    // Casts Heal three times, each after the reports of the one before.
    void CastThreeTimes() {
        for (std::size_t casts = 1; casts <= 3; ++casts) {
            ClickSpell(kHeal);
            ASSERT_TRUE(WaitTold("cast Heal", casts));
            ASSERT_TRUE(WaitQuiet());
        }
    }
    // What is saved of the reagents of Heal at the end.
    void ExpectSaved(const std::string& silk, const std::string& garlic,
                     const std::string& ginseng) {
        ASSERT_EQ(CloseSpellwick(), 0);
        EXPECT_EQ(Stored(kMira, "SS 0"), silk);
        EXPECT_EQ(Stored(kMira, "GA 0"), garlic);
        EXPECT_EQ(Stored(kMira, "GI 0"), ginseng);
    }
};

TEST_F(TodaysTools, ReportsCastsAndStock_TheCountersAreThePack) {
    StartWith("razor", "Practice (Practice) - Razor");
    CastThreeTimes();
    EXPECT_EQ(CountTold("out send 1326 4 0"), 3U) << "Heal is the fourth of its circle";
    ExpectSaved("72", "57", "57");
}

TEST_F(TodaysTools, ReportsCastsAlone_EachIsPaidOnce) {
    StartWith("razor-enhanced", "Practice (Practice) - Razor Enhanced");
    CastThreeTimes();
    EXPECT_EQ(CountTold("out send 1326 4 0"), 3U);
    ExpectSaved("7", "7", "7");
}

TEST_F(TodaysTools, ReportsNothingOfCasts_TheClickPays) {
    StartWith("classicuo", "UOASSIST-TP-MSG-WND");
    CastThreeTimes();
    EXPECT_EQ(CountTold("out send 1326"), 0U);
    ExpectSaved("7", "7", "7");
}

}  // namespace
}  // namespace spellwick::testing_support
