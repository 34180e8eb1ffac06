// The end of the program and what it saves.
#include <QCloseEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/catalogue.h"
#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class EndTest : public MainWindowFixture {};

TEST_F(EndTest, FormUnload_RunsItsStepsInOrder) {
    StartWithMira();
    bool wasVisible = false;
    bool wasSaved = true;
    m_parts.hooked = "unhook";
    m_parts.hook = [&] {
        wasVisible = Form().isVisible();
        wasSaved = !m_store.Batches().empty();
    };
    Form().close();
    EXPECT_THAT(TakeLog(), ElementsAre("take reports", "unhook", "unload settings", "end 0"));
    EXPECT_TRUE(wasVisible);
    EXPECT_FALSE(wasSaved);
    EXPECT_FALSE(Form().isVisible());
    EXPECT_THAT(m_store.Batches(), SizeIs(1));
}

TEST_F(EndTest, FormUnload_PendingEventsRunOnTheHiddenWindowBeforeTheSave) {
    StartWithMira();
    bool ran = false;
    QMetaObject::invokeMethod(
        &Form(),
        [&] {
            ran = true;
            EXPECT_FALSE(Form().isVisible());
            EXPECT_THAT(m_store.Batches(), IsEmpty());
            State().ReagentStock(1, 0) = 33;
        },
        Qt::QueuedConnection);
    Program().End(EndCause::kUser);
    EXPECT_TRUE(ran);
    EXPECT_EQ(Saved(kMira, "MR 0"), "33");
}

TEST_F(EndTest, FormUnload_SavesGlobalKeysPlayerAndPlaces) {
    StartWithMira();
    Form().move(200, 100);
    Enter(Reagent(1), "44");
    Leave();
    Form().close();
    EXPECT_EQ(Saved("Settings", "CurrentPlayerName"), kMira);
    EXPECT_EQ(Saved("Settings", "WindowTop"), "1500");
    EXPECT_EQ(Saved("Settings", "WindowLeft"), "3000");
    EXPECT_EQ(Saved("Settings", "TimerTop"), "300");
    EXPECT_EQ(Saved("Settings", "TimerLeft"), "450");
    EXPECT_EQ(Saved(kMira, "MR 0"), "44");
}

TEST_F(EndTest, FormUnload_MinimisedWindow_LeavesItsPlaceAsSaved) {
    StartWithMira();
    SetSaved("Settings", "WindowTop", "15");
    SetSaved("Settings", "WindowLeft", "30");
    Form().setWindowState(Qt::WindowMinimized);
    Form().close();
    EXPECT_EQ(Saved("Settings", "WindowTop"), "15");
    EXPECT_EQ(Saved("Settings", "WindowLeft"), "30");
}

TEST_F(EndTest, FormUnload_NoPlayer_SavesTheGlobalKeysAlone) {
    Make();
    Start();
    Form().close();
    EXPECT_THAT(m_store.Sections(), ElementsAre("Settings"));
}

TEST_F(EndTest, FormUnload_StartAgain_FindsEverythingAsItWas) {
    SetSaved("Settings", "DisplayVertical", "True");
    StartWithMira();
    ClickSpell(0);
    Named(QStringLiteral("ComboReagent")).setFocus(Qt::TabFocusReason);
    Press(Qt::Key_Down);
    ClickSpell(0);
    Form().move(200, 100);
    Form().close();
    m_form.reset();
    m_state = SharedState();
    Make();
    Start();
    EXPECT_EQ(Text("Reagent", 3), "19");
    EXPECT_EQ(State().ReagentStock(3, 0), 49);
    EXPECT_EQ(State().CurrentReagentBag, 1);
    EXPECT_EQ(Form().pos(), QPoint(200, 100));
    EXPECT_EQ(State().CurrentPlayerName, kMira);
}

TEST_F(EndTest, FormUnload_UnfinishedEntry_IsTaken) {
    struct Row {
        const char* typed;
        const char* saved;
    };
    for (const bool bySystem : {false, true}) {
        for (const Row& row : {Row{"44", "44"}, Row{"+10", "60"}, Row{"-3", "47"}, Row{"", "0"}}) {
            SCOPED_TRACE(row.typed);
            m_form.reset();
            m_state = SharedState();
            StartWithMira();
            Enter(Reagent(1), row.typed);
            if (bySystem) {
                Program().End(EndCause::kSystem);
            } else {
                Form().close();
            }
            EXPECT_EQ(Saved(kMira, "MR 0"), row.saved);
            EXPECT_THAT(TakeLog(),
                        ElementsAre("take reports", "unhook", "unload settings", "end 0"));
        }
    }
}

TEST_F(EndTest, FormUnload_UnfinishedEntryThatIsRefused_IsToldToTheUserAlone) {
    for (const bool bySystem : {false, true}) {
        m_form.reset();
        m_state = SharedState();
        StartWithMira();
        Enter(Reagent(1), "-51");
        if (bySystem) {
            Program().End(EndCause::kSystem);
            EXPECT_THAT(TakeBoxes(), IsEmpty());
        } else {
            Form().close();
            EXPECT_THAT(TakeBoxes(),
                        ElementsAre(Box{.text = "You do not have that amount of reagents"}));
        }
        EXPECT_EQ(Saved(kMira, "MR 0"), "50");
        EXPECT_EQ(TakeLog().back(), "end 0");
    }
}

TEST_F(EndTest, FormUnload_UnfinishedEntryOfAnotherBag_GoesThere) {
    StartWithMira();
    Program().ClickBag(1);
    Enter(Reagent(1), "+10");
    Form().close();
    EXPECT_EQ(Saved(kMira, "MR 0"), "50");
    EXPECT_EQ(Saved(kMira, "MR 1"), "30");
}

TEST_F(EndTest, FormUnload_UnfinishedTithes_AreTaken) {
    StartWithMira();
    DoubleClick(Named(QStringLiteral("LabelTithes")));
    Type("+25");
    Form().close();
    EXPECT_EQ(Saved(kMira, "CurrentTithing"), " 525");
}

TEST_F(EndTest, FormUnload_UnfinishedEntryThatOverflows_CostsTheRestNothing) {
    StartWithMira();
    State().ReagentStock(1, 0) = 32767;
    State().ReagentStock(2, 0) = 12;
    Program().ShowCounter(1);
    Enter(Reagent(1), "+10");
    Form().close();
    EXPECT_EQ(Saved(kMira, "MR 0"), "32767");
    EXPECT_EQ(Saved(kMira, StockKey(2, 0)), "12");
    EXPECT_THAT(TakeLog(), ElementsAre("take reports", "unhook", "unload settings", "end 0"));
}

TEST_F(EndTest, FormUnload_SaveFails_AsksAndEndsWithoutSaving) {
    StartWithMira();
    m_store.FailWith("The disk is full.");
    Form().close();
    EXPECT_THAT(TakeBoxes(), ElementsAre(Box{.text = "The disk is full.",
                                             .icon = BoxIcon::kExclamation,
                                             .buttons = BoxButtons::kTryAgainOrEnd}));
    EXPECT_THAT(TakeLog(), ElementsAre("take reports", "unhook", "unload settings",
                                       "box The disk is full.", "end 3"));
    EXPECT_EQ(Saved(kMira, "MR 0"), "50");
}

TEST_F(EndTest, FormUnload_CalledAgainWhileItRuns_DoesNothingMore) {
    StartWithMira();
    m_parts.hooked = "unhook";
    m_parts.hook = [&] { Program().End(EndCause::kUser); };
    Form().close();
    EXPECT_THAT(TakeLog(), ElementsAre("take reports", "unhook", "unload settings", "end 0"));
}

TEST_F(EndTest, SaveAfterFailure_SavesPlayerAndGlobalKeysEachOnItsOwn) {
    StartWithMira();
    State().ReagentStock(1, 0) = 33;
    State().MeditateLevel = 44;
    EXPECT_TRUE(Program().SaveAfterFailure());
    EXPECT_THAT(m_store.Batches(), SizeIs(2));
    EXPECT_EQ(Saved(kMira, "MR 0"), "33");
    EXPECT_EQ(Saved("Settings", "MeditateLevel"), "44");
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(EndTest, SaveAfterFailure_AStepFails_TheOthersAreDone) {
    StartWithMira();
    State().ReagentStock(1, 0) = 33;
    State().MeditateLevel = 44;
    m_parts.failing = "unhook";
    EXPECT_FALSE(Program().SaveAfterFailure());
    EXPECT_EQ(Saved(kMira, "MR 0"), "33");
    EXPECT_EQ(Saved("Settings", "MeditateLevel"), "44");
}

TEST_F(EndTest, SaveAfterFailure_StoreFails_SaysSo) {
    StartWithMira();
    m_store.FailWith("The disk is full.");
    EXPECT_FALSE(Program().SaveAfterFailure());
}

TEST_F(EndTest, SaveAfterFailure_WithoutASpellTable_KeepsTheStoreAsItWas) {
    SavePlayer(kMira);
    Make();
    EXPECT_FALSE(Program().SaveAfterFailure());
    EXPECT_THAT(m_store.Batches(), IsEmpty());
    EXPECT_EQ(Saved(kMira, "MR 0"), "50");
}

TEST_F(EndTest, SaveOption_WritesOneKeyAtOnce) {
    StartWithMira();
    Program().SaveOption("AlwaysOnTop", "True");
    EXPECT_THAT(m_store.Batches(),
                ElementsAre(ElementsAre(SettingChange{"Settings", "AlwaysOnTop", "True"})));
}

}  // namespace
}  // namespace spellwick
