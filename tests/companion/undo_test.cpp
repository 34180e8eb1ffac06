// The Undo button and the Meditate button.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/companion_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class UndoTest : public CompanionFixture {
  protected:
    void Undo() { ClickCommand(0); }
};

TEST_F(UndoTest, Undo_AfterACast_GivesBoxesCellsAndAmountsBack) {
    StartWithMira();
    ClickSpell(0);
    ASSERT_EQ(Text("Reagent", 3), "49");
    Undo();
    EXPECT_EQ(Text("Reagent", 3), "50");
    EXPECT_EQ(Text("Reagent", 7), "50");
    EXPECT_EQ(State().ReagentStock(3, 0), 50);
    EXPECT_EQ(Text("LabelAmount", 0), " 50");
    EXPECT_EQ(m_keys.sent.size(), 1U);
}

TEST_F(UndoTest, Undo_BeforeAnyCast_AddsNothing) {
    StartWithMira();
    Undo();
    for (int reagent = 1; reagent <= 13; ++reagent) {
        EXPECT_EQ(Text("Reagent", reagent), "50");
    }
    EXPECT_EQ(Text("LabelTithes"), "500");
}

TEST_F(UndoTest, Undo_AfterACastWithEmptyBoxes_AddsNothing) {
    StartWithMira();
    State().DisableCasting = false;
    EnterCounter(3, "0");
    EnterCounter(7, "0");
    ClickSpell(0);
    ASSERT_EQ(m_keys.sent.size(), 1U);
    Undo();
    EXPECT_EQ(Text("Reagent", 3), "0");
    EXPECT_EQ(Text("Reagent", 7), "0");
}

// covers ODDITY(undo-again)
TEST_F(UndoTest, Undo_Oddity_TwiceGivesTwoCastsBack) {
    StartWithMira();
    ClickSpell(0);
    Undo();
    Undo();
    EXPECT_EQ(Text("Reagent", 3), "51");
    EXPECT_EQ(Text("Reagent", 7), "51");
    EXPECT_EQ(State().ReagentStock(3, 0), 51);
    EXPECT_EQ(Text("LabelAmount", 0), " 51");
}

// covers ODDITY(undo-other-bag)
TEST_F(UndoTest, Undo_Oddity_AddsToTheBagInUseNotToTheOneThatPaid) {
    StartWithMira();
    ClickSpell(0);
    Program().ClickBag(1);
    ASSERT_EQ(State().CurrentReagentBag, 1);
    Undo();
    EXPECT_EQ(Text("Reagent", 3), "21");
    EXPECT_EQ(State().ReagentStock(3, 1), 21);
    EXPECT_EQ(State().ReagentStock(3, 0), 49);
}

// covers ODDITY(undo-tithes)
TEST_F(UndoTest, Undo_Oddity_RaisesTheTithesShownNotTheOnesCounted) {
    StartWithMira();
    const int need = State().Spells(80).Reagents(kTithes);
    ShowPage(12);
    ClickSpell(0);
    const std::string left = std::to_string(500 - need);
    ASSERT_EQ(Text("LabelTithes"), left);
    const std::string amount = Text("LabelAmount", 0);
    Undo();
    EXPECT_EQ(Text("LabelTithes"), "500");
    EXPECT_EQ(Text("TxtTithes"), left);
    EXPECT_EQ(State().CurrentTithing, 500 - need);
    EXPECT_EQ(Text("LabelAmount", 0), amount);
}

// covers ODDITY(undo-keeps-tithes)
TEST_F(UndoTest, Undo_Oddity_TithesOfAnEarlierAbilityComeBackWithAReagentSpell) {
    StartWithMira();
    const int need = State().Spells(80).Reagents(kTithes);
    ShowPage(12);
    ClickSpell(0);
    ShowPage(2);
    ClickSpell(0);
    ASSERT_EQ(Text("LabelTithes"), std::to_string(500 - need));
    Undo();
    EXPECT_EQ(Text("Reagent", 3), "50");
    EXPECT_EQ(Text("LabelTithes"), "500");
    Undo();
    EXPECT_EQ(Text("LabelTithes"), std::to_string(500 + need));
}

TEST_F(UndoTest, Undo_KnowsTheLastDebitOnly) {
    StartWithMira();
    ClickSpell(0);
    ClickSpell(1);
    Undo();
    EXPECT_EQ(Text("Reagent", 3), "49");
    EXPECT_EQ(Text("Reagent", 1), "50");
    EXPECT_EQ(Text("Reagent", 5), "50");
    EXPECT_EQ(Text("Reagent", 8), "50");
}

TEST_F(UndoTest, Undo_LinkedBeforeTheReport_AddsTheEarlierDebit) {
    StartWithMira();
    ClickSpell(0);
    State().AssistLinked = true;
    State().CurrentMana = 100;
    ClickSpell(1);
    Undo();
    EXPECT_EQ(Text("Reagent", 3), "50");
    EXPECT_EQ(Text("Reagent", 1), "50");
}

TEST_F(UndoTest, Undo_OverflowOfACell_NamesTheAction) {
    StartWithMira();
    ClickSpell(0);
    Program().TypeCounter(3, "32767");
    Undo();
    EXPECT_THAT(TakeFailures(), ElementsAre(UncaughtFailure{FailureKind::kOverflow,
                                                            "pressing Undo the last debit"}));
}

TEST_F(UndoTest, Meditate_SearchesBringsForwardTypesAndGivesTheFocusToHelp) {
    StartWithMira();
    ClickCommand(4);
    EXPECT_THAT(TakeLog(),
                ElementsAre("find Ultima Online", "foreground 7", "focus 7", "keys  {ENTER}"));
    EXPECT_EQ(m_focus, "Command(1)");
}

TEST_F(UndoTest, Meditate_ThirdDawnClient_IsTheSecondSearch) {
    StartWithMira();
    m_clients.windows = {{9, "Ultima Online Third Dawn", kMira}};
    ClickCommand(4);
    EXPECT_THAT(TakeLog(), ElementsAre("find Ultima Online", "find Ultima Online Third Dawn",
                                       "foreground 9", "focus 9", "keys  {ENTER}"));
    EXPECT_EQ(State().ClientWindow, 9U);
}

TEST_F(UndoTest, Meditate_NoClient_ShowsTheBoxSendsNothingAndGivesTheFocusToHelp) {
    StartWithMira();
    OpenClient("");
    ClickCommand(4);
    EXPECT_THAT(TakeBoxes(), ElementsAre(Box{.text = "Could not find Ultima Online.",
                                             .icon = BoxIcon::kCritical}));
    EXPECT_THAT(m_keys.sent, IsEmpty());
    EXPECT_EQ(State().ClientWindow, 0U);
    EXPECT_EQ(m_focus, "Command(1)");
}

TEST_F(UndoTest, Meditate_UpperCaseKeyStaysUpperCaseWhereASpellsDoesNot) {
    StartWithMira();
    for (const int number : {kMeditationMacro, 1}) {
        State().MacroAlt(number) = "%";
        State().MacroCtrl(number) = "^";
        State().MacroShift(number) = "+";
        State().MacroKey(number) = "M";
    }
    ClickCommand(4);
    ClickSpell(0);
    EXPECT_THAT(m_keys.sent, ElementsAre("%^+M{ENTER}", "%^+m{ENTER}"));
}

TEST_F(UndoTest, CastSpell_MarksInSpokenTextStayMarks) {
    StartWithMira();
    State().SendSpellText = 1;
    State().SendSpellSuffix = 1;
    State().Spells(0).SpellText = "1+1 {f1}";
    State().SpellTextSuffix = "100% ^x";
    ClickSpell(0);
    EXPECT_THAT(m_keys.sent, ElementsAre("%11+1 {f1}{ENTER}100% ^x{ENTER}"));
}

}  // namespace
}  // namespace spellwick
