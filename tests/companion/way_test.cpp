// The hints behind a refusal: what they say, where they lead, and when they come.
#include "companion/way.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/companion/casting_fixture.h"

namespace spellwick {

void PrintTo(const WayHint& hint, std::ostream* out) {
    *out << '"' << hint.text << "\" to " << static_cast<int>(hint.target.way) << ", row "
         << hint.target.row;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kCursedWeapon = 67;  // Necromancer
constexpr int kCloseWounds = 81;   // Paladin

TEST_F(CastingTest, NoSkill_AHintLeadsToTheSkillOfTheSchool) {
    struct Row {
        int row;
        const char* text;
    };
    StartWithMira();
    for (const Row& row : {Row{1, "Enter your Magery here: Settings, Skills"},
                           Row{63, "Enter your Magery here: Settings, Skills"},
                           Row{64, "Enter your Necromancy here: Settings, Skills"},
                           Row{79, "Enter your Necromancy here: Settings, Skills"},
                           Row{80, "Enter your Chivalry here: Settings, Skills"},
                           Row{89, "Enter your Chivalry here: Settings, Skills"}}) {
        SCOPED_TRACE(row.row);
        State().Spells(row.row).MinimumSkill = 101;
        Cast(row.row);
        EXPECT_EQ(TakeBoxes().size(), 1U);
        EXPECT_THAT(TakeWays(), ElementsAre(WayHint{row.text, {Way::kSkill, row.row}}));
    }
}

TEST_F(CastingTest, SilentRefusal_GivesNoHint) {
    StartWithMira();
    State().Spells(0).MinimumSkill = 101;
    Cast(0);
    EXPECT_THAT(TakeWays(), IsEmpty());
}

TEST_F(CastingTest, LittleIntelligence_TheHintComesWhenTheCastIsOver) {
    StartWithMira();
    State().Intelligence = 3;
    State().Magery = 0;
    Program().UpdateChances();
    m_boxes.whileStanding = [&] { EXPECT_THAT(TakeWays(), IsEmpty()); };
    InThePause([&] { EXPECT_THAT(TakeWays(), IsEmpty()) << "keys are about to be typed"; });
    Cast(3);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_EQ(m_keys.sent.size(), 1U);
    EXPECT_THAT(TakeWays(), ElementsAre(WayHint{"Enter your Intelligence here: Settings, Skills",
                                                {Way::kIntelligence, 3}}));
}

TEST_F(CastingTest, NoStock_AHintLeadsToTheCounters) {
    StartWithMira();
    State().DisableCasting = true;
    for (int reagent = 1; reagent <= 13; ++reagent) {
        EnterCounter(reagent, "0");
        Leave();
    }
    Cast(3);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_THAT(
        TakeWays(),
        ElementsAre(WayHint{"Type how many reagents you have into the counters, then press Enter",
                            {Way::kCounters, 3}}));
    // The first that Heal takes.
    i32 first = 1;
    while (State().Spells(3).Reagents(first) == 0) {
        ++first;
    }
    Program().FocusStock(3);
    EXPECT_EQ(m_focus, "Reagent(" + std::to_string(first) + ")");
    // The next that is lacking.
    EnterCounter(first, "5");
    Leave();
    i32 second = first + 1;
    while (State().Spells(3).Reagents(second) == 0) {
        ++second;
    }
    Program().FocusStock(3);
    EXPECT_EQ(m_focus, "Reagent(" + std::to_string(second) + ")");
}

TEST_F(CastingTest, NoStockOfAHiddenCounter_AHintLeadsToItsOption) {
    StartWithMira();
    State().DisableCasting = true;
    for (int reagent = 9; reagent <= 13; ++reagent) {
        EnterCounter(reagent, "0");
        Leave();
    }
    State().ShowNecroRegs = false;
    Cast(kCursedWeapon);
    TakeBoxes();
    EXPECT_THAT(TakeWays(),
                ElementsAre(WayHint{
                    "Show the counters of the Necromancer reagents first: Settings, Settings",
                    {Way::kNecroReagents, kCursedWeapon}}));
    State().ShowNecroRegs = true;
    Cast(kCursedWeapon);
    TakeBoxes();
    EXPECT_THAT(
        TakeWays(),
        ElementsAre(WayHint{"Type how many reagents you have into the counters, then press Enter",
                            {Way::kCounters, kCursedWeapon}}));
}

TEST_F(CastingTest, NoTithes_AHintLeadsToTheTithes) {
    StartWithMira();
    State().DisableCasting = true;
    State().CurrentTithing = 0;
    Program().UpdateAmounts();
    Cast(kCloseWounds);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_THAT(TakeWays(),
                ElementsAre(WayHint{
                    "Enter your tithing points here: click the ankh, type them, press Enter",
                    {Way::kTithingPoints, kCloseWounds}}));
}

TEST_F(CastingTest, NoGame_AHintLeadsToTheTabGame) {
    SavePlayer(kMira);
    Make();
    Start();
    m_boxes.whileStanding = [&] { EXPECT_THAT(TakeWays(), IsEmpty()); };
    Cast(3);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_THAT(
        TakeWays(),
        ElementsAre(WayHint{"Start the game, or choose its window: Settings, Game", {Way::kGame}}));
}

TEST_F(CastingTest, NobodyLoggedIn_TheHintSaysSo) {
    SavePlayer(kMira);
    OpenClient("Ultima Online");
    Make();
    Start();
    Tick(1);
    Cast(3);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_THAT(TakeWays(),
                ElementsAre(WayHint{"Log in to the game, or choose its window: Settings, Game",
                                    {Way::kGame}}));
}

TEST_F(CastingTest, CastThatWorks_GivesNoHint) {
    StartWithMira();
    Cast(3);
    EXPECT_THAT(TakeWays(), IsEmpty());
}

TEST(CounterToFill, EnoughOfAll_IsTheFirstThatTheSpellTakes) {
    SpellRecord spell;
    Screen screen;
    EXPECT_EQ(CounterToFill(spell, screen), 1) << "a spell that takes none";
    spell.Reagents(4) = 2;
    spell.Reagents(7) = 1;
    screen.counters(4).text = "2";
    screen.counters(7).text = "1";
    EXPECT_EQ(CounterToFill(spell, screen), 4);
    screen.counters(4).text = "1";
    screen.counters(7).text = "0";
    EXPECT_EQ(CounterToFill(spell, screen), 4);
    screen.counters(4).text = "2";
    EXPECT_EQ(CounterToFill(spell, screen), 7);
}

}  // namespace
}  // namespace spellwick
