// What a click on a spell does, step by step.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/companion/casting_fixture.h"
#include "tests/support/duration_rules.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Box Information(const char* text) {
    return {.text = text, .icon = BoxIcon::kInformation};
}

const Box kNoClientBox{.text = "Could not find Ultima Online.", .icon = BoxIcon::kCritical};
const Box kBookBox{.text =
                       "That Spell is not in your SpellBook. Do you want it added to your "
                       "spellbook so you can use it now ?",
                   .icon = BoxIcon::kQuestion,
                   .buttons = BoxButtons::kYesNo};

TEST_F(CastingTest, CastSpell_Plain_BringsTheClientForwardTypesAndDebits) {
    StartWithMira();
    // Clumsy takes a Bloodmoss and a Nightshade.
    Cast(0);
    EXPECT_THAT(TakeLog(), ElementsAre("foreground 7", "focus 7", "keys %1{ENTER}"));
    EXPECT_TRUE(m_keys.allWaited);
    std::vector<int> left = m_full;
    left[2] = 49;
    left[6] = 49;
    EXPECT_EQ(Counters(), left);
    EXPECT_EQ(Stock(0), left);
    EXPECT_EQ(Text("LabelAmount", 0), " 49");
    EXPECT_EQ(State().CurrentSpell, 0);
    EXPECT_EQ(m_focus, "CheckCircle(0)");
}

TEST_F(CastingTest, CastSpell_PaladinAbility_TakesTithesFromPointsLabelAndBox) {
    StartWithMira();
    const int need = State().Spells(80).Reagents(kTithes);
    ASSERT_GT(need, 0);
    Cast(80);
    EXPECT_EQ(State().CurrentTithing, 500 - need);
    EXPECT_EQ(Text("LabelTithes"), std::to_string(500 - need));
    EXPECT_EQ(Text("TxtTithes"), std::to_string(500 - need));
    EXPECT_EQ(Counters(), m_full);
}

TEST_F(CastingTest, CastSpell_ChanceZeroSkillTooLow_RefusesInTheWordsOfTheRow) {
    struct Row {
        const char* name;
        int row;
        const char* box;  // none: the cast ends silently
    };
    StartWithMira();
    for (const Row& row :
         {Row{"first row of all", 0, nullptr},
          Row{"second row", 1, "Not enough Magery skill to cast this spell."},
          Row{"row 10", 10, "Not enough Magery skill to cast this spell."},
          Row{"last of Magery", 63, "Not enough Magery skill to cast this spell."},
          Row{"first Necromancer row", 64, "Not enough Magery skill to cast this spell."},
          Row{"second Necromancer row", 65, "Not enough Necromancy skill to cast this spell."},
          Row{"last Necromancer row", 79, "Not enough Necromancy skill to cast this spell."},
          Row{"first Paladin row", 80, "Not enough Necromancy skill to cast this spell."},
          Row{"second Paladin row", 81, "Not enough Chivalry skill to use this ability."},
          Row{"row 90", 90, "Not enough Chivalry skill to use this ability."},
          Row{"row 91", 91, nullptr}, Row{"Exorcism", 95, nullptr}}) {
        SCOPED_TRACE(row.name);
        State().Spells(row.row).MinimumSkill = 101;
        Cast(row.row);
        ASSERT_EQ(Text("LabelChance", SlotOf(row.row)), "0");
        if (row.box == nullptr) {
            EXPECT_THAT(TakeBoxes(), IsEmpty());
        } else {
            EXPECT_THAT(TakeBoxes(), ElementsAre(Information(row.box)));
        }
        EXPECT_THAT(m_keys.sent, IsEmpty());
        EXPECT_EQ(Counters(), m_full);
        EXPECT_EQ(State().CurrentTithing, 500);
        EXPECT_EQ(State().CurrentSpell, row.row);
    }
}

TEST_F(CastingTest, CastSpell_ChanceZeroIntelligenceTooLow_WarnsAndCasts) {
    StartWithMira();
    State().Spells(10).Mana = 101;
    Cast(10);
    EXPECT_THAT(TakeBoxes(),
                ElementsAre(Information("Not enough Intelligence to use this spell.")));
    EXPECT_THAT(m_keys.sent, ElementsAre("^3{ENTER}"));
    EXPECT_NE(Counters(), m_full);
}

TEST_F(CastingTest, CastSpell_LinkedAndManaTooLow_WarnsAndCasts) {
    StartWithMira();
    State().AssistLinked = true;
    State().CurrentMana = 3;
    Cast(10);
    EXPECT_THAT(TakeBoxes(), ElementsAre(Information("Not enough Mana to use this spell.")));
    EXPECT_EQ(m_keys.sent.size(), 1U);
}

TEST_F(CastingTest, CastSpell_LinkedBothTooLow_WarnsTwiceInOrder) {
    StartWithMira();
    State().AssistLinked = true;
    State().CurrentMana = 3;
    State().Spells(10).Mana = 101;
    Cast(10);
    EXPECT_THAT(TakeBoxes(), ElementsAre(Information("Not enough Intelligence to use this spell."),
                                         Information("Not enough Mana to use this spell.")));
    EXPECT_EQ(m_keys.sent.size(), 1U);
}

TEST_F(CastingTest, CastSpell_NotLinkedManaTooLow_SaysNothingOfMana) {
    StartWithMira();
    State().CurrentMana = 0;
    Cast(10);
    EXPECT_EQ(m_keys.sent.size(), 1U);
}

TEST_F(CastingTest, CastSpell_ChanceAboveZero_TestsNeitherSkillNorIntelligenceNorMana) {
    StartWithMira();
    ShowPageOf(10);
    ASSERT_NE(Text("LabelChance", 2), "0");
    State().AssistLinked = true;
    State().Spells(10).MinimumSkill = 101;
    State().Spells(10).Mana = 200;
    State().CurrentMana = 0;
    ClickSpell(2);
    EXPECT_EQ(m_keys.sent.size(), 1U);
}

TEST_F(CastingTest, CastSpell_CtrlClick_CreditsWithoutClient) {
    StartWithMira();
    OpenClient("");
    Tick(1);
    Cast(0, kCtrl);
    std::vector<int> more = m_full;
    more[2] = 51;
    more[6] = 51;
    EXPECT_EQ(Counters(), more);
    EXPECT_EQ(Stock(0), more);
    EXPECT_EQ(Text("LabelAmount", 0), " 51");
    EXPECT_THAT(m_keys.sent, IsEmpty());
}

TEST_F(CastingTest, CastSpell_OtherModifiers_Cast) {
    struct Row {
        const char* name;
        i16 mask;
    };
    StartWithMira();
    ShowPageOf(0);
    for (const Row& row : {Row{"none", 0}, Row{"Shift", 1}, Row{"Ctrl and Shift", 3}, Row{"Alt", 4},
                           Row{"Ctrl and Alt", 6}}) {
        SCOPED_TRACE(row.name);
        m_keys.sent.clear();
        ClickSpell(0, row.mask);
        EXPECT_EQ(Program().TheLastCast().LastMouseShift, row.mask);
        EXPECT_EQ(m_keys.sent.size(), 1U);
    }
}

TEST_F(CastingTest, CastSpell_CtrlClickOnARefusedSpell_IsRefused) {
    StartWithMira();
    State().Spells(10).MinimumSkill = 101;
    Cast(10, kCtrl);
    EXPECT_THAT(TakeBoxes(),
                ElementsAre(Information("Not enough Magery skill to cast this spell.")));
    EXPECT_EQ(Counters(), m_full);
}

TEST_F(CastingTest, CastSpell_NoClient_ShowsBoxAndDebitsNothing) {
    StartWithMira();
    for (const char* server : {"?", ""}) {
        State().ServerName = server;
        Cast(0);
        EXPECT_THAT(TakeBoxes(), ElementsAre(kNoClientBox));
        EXPECT_THAT(m_keys.sent, IsEmpty());
        EXPECT_EQ(Counters(), m_full);
    }
}

TEST_F(CastingTest, CastSpell_NoClientAndNoStock_SpeaksOfTheClientOnly) {
    StartWithMira();
    OpenClient("");
    Tick(1);
    EnterCounter(3, "0");
    Cast(0);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNoClientBox));
}

TEST_F(CastingTest, CastSpell_NotInBookAnsweredNo_ChangesNothing) {
    StartWithMira();
    State().Spellbook(0) = 1;
    m_boxes.answers = {BoxAnswer::kNo};
    Cast(0);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kBookBox));
    EXPECT_EQ(State().Spellbook(0), 1);
    EXPECT_THAT(m_keys.sent, IsEmpty());
    EXPECT_EQ(Counters(), m_full);
}

TEST_F(CastingTest, CastSpell_NotInBookAnsweredYes_AddsRepaintsAndCasts) {
    StartWithMira();
    State().Spellbook(0) = 1;
    Program().UpdatePage();
    m_boxes.answers = {BoxAnswer::kYes};
    Cast(0);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kBookBox));
    EXPECT_EQ(State().Spellbook(0), 0);
    EXPECT_THAT(TakeLog(), ElementsAre("box " + kBookBox.text, "update chance", "foreground 7",
                                       "focus 7", "keys %1{ENTER}"));
    EXPECT_EQ(Counters()[2], 49);
}

TEST_F(CastingTest, CastSpell_NoStockAndCastingDisabled_RefusesBySchool) {
    struct Row {
        const char* name;
        int row;
        const char* box;
    };
    StartWithMira();
    for (int reagent = 1; reagent <= 13; ++reagent) {
        Program().TypeCounter(reagent, "0");
    }
    State().CurrentTithing = 0;
    for (const Row& row : {Row{"Magery", 0, "Not enough reagents to cast that spell"},
                           Row{"Necromancer", 64, "Not enough reagents to cast that spell"},
                           Row{"Chivalry", 80, "Not enough tithing points to use that ability"}}) {
        SCOPED_TRACE(row.name);
        Cast(row.row);
        EXPECT_THAT(TakeBoxes(), ElementsAre(Box{.text = row.box, .icon = BoxIcon::kExclamation}));
        EXPECT_THAT(m_keys.sent, IsEmpty());
    }
}

TEST_F(CastingTest, CastSpell_NoStockAndCastingAllowed_CastsAndLeavesEmptyBoxes) {
    StartWithMira();
    State().DisableCasting = false;
    EnterCounter(3, "0");
    Cast(0);
    EXPECT_EQ(m_keys.sent.size(), 1U);
    EXPECT_EQ(Counters()[2], 0);
    EXPECT_EQ(Counters()[6], 49);
    std::vector<int> restored = m_full;
    restored[2] = 0;
    ClickCommand(kUndo);
    EXPECT_EQ(Counters(), restored);
}

TEST_F(CastingTest, CastSpell_Linked_LeavesTheDebitToTheReport) {
    StartWithMira();
    State().AssistLinked = true;
    State().CurrentMana = 100;
    Cast(0);
    EXPECT_EQ(m_keys.sent.size(), 1U);
    EXPECT_EQ(Counters(), m_full);
    ClickCommand(kUndo);
    EXPECT_EQ(Counters(), m_full);
}

TEST_F(CastingTest, CastSpell_LinkComesUpDuringThePause_DoesNotDebit) {
    StartWithMira();
    m_keys.duringSend = [&] { State().AssistLinked = true; };
    Cast(0);
    EXPECT_EQ(Counters(), m_full);
}

TEST_F(CastingTest, CastSpell_SpellText_SentWhenTheSwitchIsExactlyOne) {
    struct Row {
        const char* name;
        i16 text;
        i16 suffix;
        const char* spell;
        const char* sent;
    };
    StartWithMira();
    State().SpellTextSuffix = "... Alakazam ...";
    for (const Row& row :
         {Row{"off", 0, 0, "Uus Jux", "%1{ENTER}"}, Row{"on", 1, 0, "Uus Jux", "%1Uus Jux{ENTER}"},
          Row{"minus one is not on", -1, -1, "Uus Jux", "%1{ENTER}"},
          Row{"two is not on", 2, 2, "Uus Jux", "%1{ENTER}"},
          Row{"an empty text", 1, 0, "", "%1{ENTER}"},
          Row{"suffix alone", 0, 1, "Uus Jux", "%1{ENTER}... Alakazam ...{ENTER}"},
          Row{"both", 1, 1, "Uus Jux", "%1Uus Jux{ENTER}... Alakazam ...{ENTER}"}}) {
        SCOPED_TRACE(row.name);
        State().SendSpellText = row.text;
        State().SendSpellSuffix = row.suffix;
        State().Spells(0).SpellText = row.spell;
        m_keys.sent.clear();
        Cast(0);
        EXPECT_THAT(m_keys.sent, ElementsAre(row.sent));
    }
}

// covers ODDITY(untyped-cast-pays)
TEST_F(CastingTest, CastSpell_Oddity_KeysThatCannotBeTypedCostAllTheSameAndOnlyTheLogSaysSo) {
    StartWithMira();
    m_keys.result = {"The keyboard is gone."};
    testing::internal::CaptureStderr();
    Cast(0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "spellwick: the game's keys were not typed: The keyboard is gone.\n");
    EXPECT_EQ(Counters()[2], 49);
}

TEST_F(CastingTest, CastSpell_TextThatCannotBeTypedWhole_TheMacroKeyGoesOutAndTheLogNamesLetters) {
    StartWithMira();
    State().SendSpellText = 1;
    State().SendSpellSuffix = 1;
    State().Spells(0).SpellText = "\u00e4a\u00f6";
    m_keys.results = {{.error = "no place", .missing = "\u00e4\u00f6"}};
    testing::internal::CaptureStderr();
    Cast(0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "spellwick: the spoken text was left out: the keyboard has no key and no free place "
              "for \u00e4\u00f6\n");
    EXPECT_THAT(m_keys.sent,
                ElementsAre("%1\u00e4a\u00f6{ENTER}... Alakazam ...{ENTER}", "%1{ENTER}"));
    EXPECT_EQ(Counters()[2], 49);
}

TEST_F(CastingTest, CastSpell_MacroKeyThatCannotBeTyped_IsNotTriedTwice) {
    StartWithMira();
    m_keys.results = {{.error = "no place", .missing = "1"}};
    testing::internal::CaptureStderr();
    Cast(0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "spellwick: the game's keys were not typed: no place\n");
    EXPECT_EQ(m_keys.sent.size(), 1U);
}

TEST_F(CastingTest, CastSpell_NotLinked_StartsTheCountdownOfASpellThatLasts) {
    StartWithMira();
    State().Spells(0).File5 = kMagery120;
    TakeChanges();
    Cast(1);
    EXPECT_FALSE(Program().Timers().SpellsActive());
    Cast(0);
    ASSERT_EQ(Program().Timers().Screen().shown.size(), 1U);
    EXPECT_EQ(Program().Timers().Screen().shown[0].row, 0);
    EXPECT_TRUE(TakeChanges().back().timers);
}

TEST_F(CastingTest, CastSpell_Linked_StartsNoCountdown) {
    StartWithMira();
    State().Spells(0).File5 = kMagery120;
    State().AssistLinked = true;
    Cast(0);
    EXPECT_EQ(m_keys.sent.size(), 1U);
    EXPECT_FALSE(Program().Timers().SpellsActive());
}

}  // namespace
}  // namespace spellwick
