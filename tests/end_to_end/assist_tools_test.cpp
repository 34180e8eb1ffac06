// The real program beside the assist tools of today, which the practice tool pretends to be.
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/end_to_end/tool_desk.h"

namespace spellwick::testing_support {
namespace {

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

TEST_F(TodaysTools, ToolOfTheTitle_TakesOverFromTheOther) {
    StartWith("razor", "Practice (Practice) - Razor");
    ClickSpell(kHeal);
    ASSERT_TRUE(WaitTold("cast Heal"));
    ASSERT_TRUE(WaitQuiet());
    ASSERT_EQ(CountTold("out send 1326"), 1U);
    StartTool("uoassist", "UOAssist");
    ASSERT_TRUE(WaitTold("out result 1")) << "registered with the new one";
    ASSERT_TRUE(WaitQuiet());
    ClickSpell(kHeal);
    ASSERT_TRUE(WaitTold("out send 1326 4 0"));
    ASSERT_TRUE(WaitQuiet());
    LeaveTool();
    EXPECT_EQ(CountTold("out send 1326"), 1U) << "signed off from the first";
    // Each has a pack of its own, which is full at its start.
    ExpectSaved("74", "59", "59");
}

TEST_F(TodaysTools, OwnTableWithAFault_IsToldOnceAndUoAssistIsKnown) {
    std::filesystem::create_directories(StoreFile().parent_path());
    std::ofstream(StoreFile().parent_path() / "AssistTools.txt")
        << "x, 1\nMine, {name, absolute, yes, yes, yes, none\n";
    PrepareMage(kMira, 10);
    StartGame();
    TellGame("login 1");
    StartTool();
    StartSpellwickOverBox();
    ASSERT_TRUE(WaitTold("out result 1"));
    EXPECT_EQ(CloseSpellwick(), 0);
}

}  // namespace
}  // namespace spellwick::testing_support
