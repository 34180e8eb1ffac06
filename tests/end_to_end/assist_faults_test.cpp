// What a player sees of a well-behaved assist tool, and of a faulty one.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/end_to_end/tool_desk.h"
#include "tests/support/pace.h"

namespace spellwick::testing_support {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using testing::IsSupersetOf;

constexpr int kCount = 3;

using Values = std::vector<std::pair<const std::string, std::string>>;

// The stock that the tool reports. The store keeps Grave Dust under "DB" and Daemon Blood under
// "GD".
const Values kPack{{"BM 0", "80"},  {"BP 0", "120"},
                   {"GA 0", "60"},  {"GI 0", "60"},
                   {"MR 0", "150"}, {"NI 0", "40"},
                   {"SA 0", "90"},  {"SS 0", "75"},
                   {"BW 0", "30"},  {"DB 0", "40"},
                   {"GD 0", "20"},  {"NC 0", "15"},
                   {"PI 0", "25"},  {"CurrentTithing", " 15000"}};

class AssistTool : public ToolDesk {
  protected:
    void ClickCount() { m_desk->Click(Window(), Command(kCount)); }
    // Counts, and waits for the last report.
    void Count() {
        const std::size_t before = CountTold("in send 1125");
        ClickCount();
        ASSERT_TRUE(WaitTold("in send 1125", before + 1));
        ASSERT_TRUE(WaitQuiet());
    }
    // Casts Heal and waits for the last of the keys.
    void TypeHeal() {
        std::vector<std::string> expected = Typed();
        expected.insert(expected.end(), {"key Alt+4", "cast Heal", "key Enter"});
        ClickSpell(kHeal);
        ASSERT_TRUE(WaitTyped(expected)) << testing::PrintToString(Typed());
    }
    // The same, and waits for all the reports of the cast.
    void CastHeal() {
        TypeHeal();
        ASSERT_TRUE(WaitQuiet());
    }
    // Closes Spellwick as a user would and checks what it has saved.
    void ExpectSaved(const Values& values) {
        ASSERT_EQ(CloseSpellwick(), 0) << "it still answers";
        EXPECT_THAT(StoredSection(kMira), IsSupersetOf(values));
    }
};

TEST_F(AssistTool, Count_TakesThePackOverAndTheButtonRests) {
    PrepareMage(kMira, 10);
    StartAll();
    m_desk->MoveMouse({1200, 1000});
    m_desk->RestingPicture(Window());
    const Picture rest = CountButton();
    Count();
    m_desk->MoveMouse({1200, 1000});
    EXPECT_TRUE(WaitCountButton(rest));
    ExpectSaved(kPack);
}

TEST_F(AssistTool, Cast_IsPaidByTheReportAndAFizzleIsFree) {
    PrepareMage(kMira, 10);
    StartAll();
    Count();
    TellTool("fizzle");
    CastHeal();
    EXPECT_EQ(CountTold("fizzled Heal"), 1U);
    CastHeal();
    EXPECT_EQ(CountTold("out send 1326 4 0"), 1U);
    ExpectSaved({{"SS 0", "74"}, {"GA 0", "59"}, {"GI 0", "59"}, {"MR 0", "150"}});
}

TEST_F(AssistTool, AnswersTwoThenOne_LinkAtTheSecondSend) {
    PrepareMage(kMira, 10);
    StartGame();
    TellGame("login 1");
    StartTool();
    TellTool("fault answers-2-1");
    StartSpellwickLinked();
    EXPECT_EQ(CountTold("in send 1224"), 2U) << "and no send more, which would switch it off";
    Count();
    EXPECT_EQ(CountTold("in send 1224"), 2U);
    ExpectSaved(kPack);
}

TEST_F(AssistTool, RefusedRegistration_IsAskedForTwiceASecondUntilItIsTaken) {
    StartGame();
    TellGame("login 1");
    StartTool();
    for (const auto& [fault, answer] : {std::pair{"fault answers-0", "out result 0"},
                                        std::pair{"fault answers-2", "out result 2"}}) {
        SCOPED_TRACE(fault);
        PrepareMage(kMira, 10);
        const std::size_t refused = CountTold(answer);
        const std::size_t accepted = CountTold("out result 1");
        TellTool(fault);
        StartSpellwick();
        ASSERT_TRUE(WaitCharacter("Mira Talon"));
        EXPECT_TRUE(WaitTold(answer, refused + 2));
        const auto since = std::chrono::steady_clock::now();
        EXPECT_TRUE(WaitTold(answer, refused + 6));
        // After two searches; the first may come at once.
        EXPECT_GT(std::chrono::steady_clock::now() - since, std::chrono::milliseconds(800));
        EXPECT_EQ(CountTold("out result 1"), accepted);
        // With a tool present a click costs nothing, and this tool never reports.
        CastHeal();
        TellTool("mend");
        ASSERT_TRUE(WaitTold("out result 1", accepted + 1));
        ASSERT_TRUE(WaitQuiet());
        EXPECT_EQ(CountTold("out result 1"), accepted + 1);
        ExpectSaved({{"SS 0", "10"}, {"GA 0", "10"}, {"GI 0", "10"}});
    }
}

TEST_F(AssistTool, ToolThatIsGoneForThreeSeconds_IsMissedAndRegisteredAnew) {
    PrepareMage(kMira, 10);
    StartAll();
    m_desk->MoveMouse({1200, 1000});
    m_desk->RestingPicture(Window());
    const Picture there = CountButton();
    TellTool("fault gone-3000");
    EXPECT_TRUE(WaitOtherCountButton(there)) << "the button goes off";
    TypeHeal();  // paid for at the click
    ASSERT_EQ(CountTold("open"), 1U) << "the cast was to be while the tool was away";
    ASSERT_TRUE(WaitTold("out result 1", 2));
    m_desk->MoveMouse({1200, 1000});
    EXPECT_TRUE(WaitCountButton(there));
    ASSERT_TRUE(WaitQuiet());
    ExpectSaved({{"SS 0", "9"}, {"GA 0", "9"}, {"GI 0", "9"}});
}

TEST_F(AssistTool, ToolThatIsBackBeforeTheNextSearch_StaysSilent) {
    PrepareMage(kMira, 10);
    StartGame();
    TellGame("login 1");
    StartTool();
    TellTool("fault answers-0");
    StartSpellwick();
    ASSERT_TRUE(WaitCharacter("Mira Talon"));
    ASSERT_TRUE(WaitTold("in send 1224", 2));
    TellTool("mend");
    // The registration marks the time of the search; the next search finds the tool back.
    ASSERT_TRUE(WaitTold("out result 1"));
    TellTool("fault gone-500");
    ASSERT_TRUE(WaitTold("open", 2));
    ASSERT_TRUE(WaitTold("connected", 2));
    const std::size_t sends = CountTold("in send 1224");
    Count();
    CastHeal();
    EXPECT_EQ(CountTold("in send 1224"), sends) << "it is not registered again";
    ExpectSaved({{"SS 0", "10"}, {"GA 0", "10"}, {"GI 0", "10"}, {"MR 0", "10"}});
}

TEST_F(AssistTool, TwoTools_TheLaterIsTalkedTo) {
    PrepareMage(kMira, 10);
    StartGame();
    TellGame("login 1");
    StartTool();
    TellTool("fault second-tool");
    StartSpellwick();
    ASSERT_TRUE(WaitCharacter("Mira Talon"));
    ASSERT_TRUE(WaitTold("2 out result 1"));
    ASSERT_TRUE(WaitQuiet());
    ClickCount();
    ASSERT_TRUE(WaitTold("2 in send 1125"));
    ASSERT_TRUE(WaitQuiet());
    EXPECT_EQ(CountTold("in send"), 0U);
    EXPECT_EQ(CountTold("connected"), 1U);
    ExpectSaved(kPack);
}

TEST_F(AssistTool, TitleInLowerCase_IsNoTool) {
    PrepareMage(kMira, 10);
    StartGame();
    TellGame("login 1");
    StartTool();
    TellTool("fault lower-case-title");
    StartSpellwick();
    ASSERT_TRUE(WaitCharacter("Mira Talon"));
    ASSERT_TRUE(WaitTold("connected"));
    CastHeal();
    EXPECT_EQ(CountTold("in send"), 0U);
    TellTool("mend");
    ASSERT_TRUE(WaitTold("out result 1"));
    ASSERT_TRUE(WaitQuiet());
    // Paid for at the click, since there was no tool then.
    ExpectSaved({{"SS 0", "9"}, {"GA 0", "9"}, {"GI 0", "9"}});
}

TEST_F(AssistTool, SilenceAfterACount_LeavesTheButtonWaitingUntilAReport) {
    PrepareMage(kMira, 10);
    StartAll();
    m_desk->MoveMouse({1200, 1000});
    m_desk->RestingPicture(Window());
    const Picture rest = CountButton();
    // The second row's report changes nothing, but still resets the button.
    for (const char* fault : {"fault unknown-items", "fault same-twice"}) {
        TellTool("fault silent-count");
        Count();
        m_desk->MoveMouse({1200, 1000});
        m_desk->RestingPicture(Window());
        EXPECT_NE(CountButton(), rest) << "still the other words";
        TellTool("mend");
        TellTool(fault);
        ASSERT_TRUE(WaitQuiet());
        EXPECT_TRUE(WaitCountButton(rest)) << fault;
    }
    ExpectSaved({{"BM 0", "80"}, {"BP 0", "10"}, {"GA 0", "10"}, {"PI 0", "10"}});
}

TEST_F(AssistTool, CountBeforeTheAnswer_IsTakenThenAndThere) {
    PrepareMage(kMira, 10);
    StartAll();
    m_desk->MoveMouse({1200, 1000});
    m_desk->RestingPicture(Window());
    const Picture rest = CountButton();
    TellTool("fault early-count");
    Count();
    m_desk->MoveMouse({1200, 1000});
    EXPECT_TRUE(WaitCountButton(rest));
    ExpectSaved(kPack);
}

// Its first search waits for the answer.
TEST_F(AssistTool, ToolThatNeverAnswers_HoldsTheFirstWindowUpForAMomentOnly) {
    PrepareMage(kMira, 10);
    StartGame();
    TellGame("login 1");
    StartTool();
    TellTool("fault mute");
    const auto start = steady_clock::now();
    StartSpellwick();
    EXPECT_LT(steady_clock::now() - start, 3s * kPace);
    EXPECT_GE(CountTold("in send 1224"), 1U) << "it was asked before the window came";
    ASSERT_TRUE(WaitCharacter("Mira Talon"));
    // Asked again later, it links.
    TellTool("mend");
    ASSERT_TRUE(WaitTold("out result 1"));
    ASSERT_TRUE(WaitQuiet());
    ExpectSaved({{"BM 0", "10"}, {"SS 0", "10"}});
}

// An unanswered message blocks the window for a second.
TEST_F(AssistTool, ToolThatHangs_HoldsUpNeitherCountNorCastForLong) {
    PrepareMage(kMira, 10);
    StartAll();
    SignalTool(SIGSTOP);
    for (int times = 0; times < 3; ++times) {
        const auto start = steady_clock::now();
        ClickCount();
        TypeHeal();
        EXPECT_LT(steady_clock::now() - start, 4s * kPace);
        std::this_thread::sleep_for(1500ms);  // the watch enables it again
    }
    SignalTool(SIGCONT);
    ASSERT_TRUE(WaitTold("in send 1125"));
    ASSERT_TRUE(WaitTold("cast Heal", 3));
    ASSERT_TRUE(WaitQuiet());
    EXPECT_LE(CountTold("in send 1125"), 3U) << "it was asked at intervals";
    ExpectSaved({{"SS 0", "72"}, {"GA 0", "57"}, {"GI 0", "57"}, {"MR 0", "150"}});
}

TEST_F(AssistTool, MuchTithing_IsTakenWhole) {
    PrepareMage(kMira, 10);
    StartAll();
    TellTool("fault tithing-40000");
    ASSERT_TRUE(WaitQuiet());
    ExpectSaved({{"CurrentTithing", " 40000"}, {"BM 0", "10"}});
}

TEST_F(AssistTool, TwoHundredReportsAtOnce_AreAllTakenInTheirOrder) {
    PrepareMage(kMira, 10);
    StartAll();
    const std::size_t before = CountTold("in result");
    TellTool("fault burst");
    ASSERT_TRUE(WaitQuiet());
    EXPECT_EQ(CountTold("in result"), before + 200);
    ExpectSaved(kPack);
}

TEST_F(AssistTool, ReportsAndACloseAtOnce_AllCount) {
    PrepareMage(kMira, 10);
    StartAll();
    TellTool("fault burst");
    ExpectSaved(kPack);
}

TEST_F(AssistTool, ReportsInTheMiddleOfACast_LeaveItsKeysAlone) {
    PrepareMage(kMira, 10);
    StartAll();
    TellTool("fault stream");
    CastHeal();
    const std::vector<std::string> told = Told();
    EXPECT_LT(std::ranges::find(told, "cast Heal"), std::ranges::find(told, "streamed"))
        << "the cast was to be while the reports came";
    EXPECT_EQ(CountTold("streamed"), 1U);
    EXPECT_EQ(Typed().size(), 3U);
    ExpectSaved({{"SS 0", "74"}, {"GA 0", "59"}, {"GI 0", "59"}, {"BM 0", "80"}});
}

TEST_F(AssistTool, ReportsWhileABoxStands_AreTaken) {
    PrepareMage(kMira, 10);
    Prepare(kMira, {{"Spellbook 3", "1"}});
    StartAll();
    ClickSpell(kHeal);
    const xcb_window_t box = m_desk->Session().WaitForWindow("Spellwick");
    ASSERT_NE(box, 0U);
    TellTool("cast Clumsy");
    TellTool("gain 104 75");
    ASSERT_TRUE(WaitQuiet());
    EXPECT_NE(m_desk->FindWindow("Spellwick"), 0U);
    AnswerBox(XKB_KEY_Escape);
    EXPECT_TRUE(Typed().empty());
    ExpectSaved({{"BM 0", "79"}, {"NI 0", "39"}, {"PI 0", "100"}, {"SS 0", "10"}});
}

TEST_F(AssistTool, FizzleThatIsReported_IsPaidUntilTheNextCount) {
    PrepareMage(kMira, 10);
    StartAll();
    Count();
    TellTool("fault fizzle-reported");
    CastHeal();
    EXPECT_EQ(CountTold("fizzled Heal"), 1U);
    ASSERT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kMira, "SS 0"), "74");
    StartSpellwickLinked();
    Count();
    ExpectSaved(kPack);
}

TEST_F(AssistTool, CastOf250_IsPassedOver) {
    PrepareMage(kMira, 10);
    StartAll();
    Count();
    TellTool("fault cast-250");
    ASSERT_TRUE(WaitQuiet());
    CastHeal();
    ExpectSaved({{"SS 0", "74"}, {"GA 0", "59"}, {"GI 0", "59"}, {"MR 0", "150"}});
}

}  // namespace
}  // namespace spellwick::testing_support
