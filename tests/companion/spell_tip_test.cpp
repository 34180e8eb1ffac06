// What is told about a spell beside its picture, and about an undo.
#include "companion/spell_tip.h"

#include <gtest/gtest.h>

#include "model/caster_values.h"
#include "model/spell_duration.h"
#include "tests/support/companion_fixture.h"

namespace spellwick {
namespace {

class SpellTipTest : public CompanionFixture {
  protected:
    std::string Tip(int slot) { return SpellTip(State(), Shown(), slot); }
    std::string Spoken(int slot) { return SpokenSpell(State(), Shown(), slot); }
    void SetKey(int row, const char* ctrl, const char* key) {
        State().MacroAlt(row + 1) = "";
        State().MacroCtrl(row + 1) = ctrl;
        State().MacroShift(row + 1) = "";
        State().MacroKey(row + 1) = key;
    }
};

TEST_F(SpellTipTest, SpellTip_TellsWhatACastTakesOfWhatThereIs) {
    StartWithMira();
    SetKey(3, "^", "4");
    EnterCounter(5, "12");
    EXPECT_EQ(Tip(3),
              "Heal\nIn Mani\n4 mana\nTakes 1 of 50 Spider Silk\nTakes 1 of 12 Garlic\n"
              "Takes 1 of 50 Ginseng\nKey: Ctrl+4\nChance: " +
                  Text("LabelChance", 3) + "%\nDuration: instant");
}

TEST_F(SpellTipTest, SpellTip_OfAnAbility_TellsTheTithes) {
    StartWithMira();
    ShowPage(12);
    const std::string need = std::to_string(State().Spells(80).Reagents(kTithes));
    EXPECT_NE(Tip(0).find("\nTakes " + need + " of 500 Tithes\n"), std::string::npos) << Tip(0);
}

TEST_F(SpellTipTest, SpellTip_WithoutAKey_SaysSo) {
    StartWithMira();
    SetKey(0, "^", "");
    EXPECT_NE(Tip(0).find("\nNo key yet\n"), std::string::npos) << Tip(0);
}

TEST_F(SpellTipTest, SpellTip_TellsSecondsWhereTheRuleGivesThem) {
    StartWithMira();
    State().Spells(0).File5 = 1;
    State().Spells(0).DurationText = "for a while";
    const i16 seconds = SpellDuration(1, CasterOf(State()));
    ASSERT_GT(seconds, 0);
    EXPECT_TRUE(Tip(0).ends_with("\nDuration: " + std::to_string(seconds) + " seconds")) << Tip(0);
    State().Spells(0).File5 = 0;
    EXPECT_TRUE(Tip(0).ends_with("\nDuration: for a while")) << Tip(0);
    State().Spells(0).DurationText = "#Formula99;";
    EXPECT_EQ(Tip(0).find("Duration"), std::string::npos) << Tip(0);
}

TEST_F(SpellTipTest, SpellTip_OfAnUnfinishedOrAbsurdCounter_IsANumber) {
    StartWithMira();
    EnterCounter(5, "99999999999999");
    EXPECT_NE(Tip(3).find("Takes 1 of 999999999 Garlic"), std::string::npos) << Tip(3);
    EnterCounter(5, "-");
    EXPECT_NE(Tip(3).find("Takes 1 of 0 Garlic"), std::string::npos) << Tip(3);
}

TEST_F(SpellTipTest, SpellTip_OfARowWithoutASpell_IsEmpty) {
    StartWithMira();
    State().Spells(2).Name.clear();
    EXPECT_EQ(Tip(2), "");
    EXPECT_EQ(Spoken(2), "No spell");
}

TEST_F(SpellTipTest, SpokenSpell_HasNameAmountAndChance) {
    StartWithMira();
    EXPECT_EQ(Spoken(0), "Clumsy, 50 castable, " + Text("LabelChance", 0) + "% chance");
    State().Spellbook(0) = 1;
    Program().UpdatePage();
    EXPECT_TRUE(Spoken(0).ends_with(", not in the spellbook")) << Spoken(0);
}

TEST_F(SpellTipTest, GivenBack_ListsTheLastDebit) {
    StartWithMira();
    EXPECT_EQ(GivenBack(State(), Program().TheLastCast().UndoAmounts), "back: nothing");
    ClickSpell(0);
    EXPECT_EQ(GivenBack(State(), Program().TheLastCast().UndoAmounts),
              "back: 1 Bloodmoss, 1 Nightshade");
}

TEST_F(SpellTipTest, TypedStock_WhileASpellIsUnderTheMouse_ColoursTheCountersAnew) {
    StartWithMira();
    Program().HoverSlot(0);
    ASSERT_EQ(Shown().counters(3).ground, kGreen);
    EnterCounter(3, "0");
    Leave();
    EXPECT_EQ(Shown().counters(3).ground, kRed);
    EnterCounter(3, "7");
    Program().CommitByEnter();
    EXPECT_EQ(Shown().counters(3).ground, kGreen);
    Program().TypeCounter(3, "0");
    Program().StepCounter(3);
    EXPECT_EQ(Shown().counters(3).ground, kRed);
    Program().LeaveSlots();
    EnterCounter(3, "7");
    Leave();
    EXPECT_EQ(Shown().counters(3).ground, kWindowBackground);
}

}  // namespace
}  // namespace spellwick
