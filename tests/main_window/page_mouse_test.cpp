// The mouse over a spell of the page and on it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/assist_messages.h"
#include "tests/main_window/page_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(PageTest, Hover_ColoursTheCountersByTheNeedAndAFixedLimit) {
    struct Row {
        const char* text;
        Colour ground;
    };
    StartWithMira();
    State().RegYellow = 20;
    State().ColorWarn = kWarn;
    for (const Row& row : {Row{"4", 0x00FF00}, Row{"3", kWarn}, Row{"1", kWarn}, Row{"0", 0x0000FF},
                           Row{"-2", 0x0000FF}, Row{"", 0x0000FF}, Row{"50", 0x00FF00}}) {
        Reagent(3).setText(QLatin1String(row.text));
        Hover(1);
        Hover(0);
        EXPECT_EQ(CounterGround(3), row.ground) << row.text;
        EXPECT_EQ(CounterGround(1), kWindowBackground);
    }
}

TEST_F(PageTest, Hover_TellsTheSpell) {
    StartWithMira();
    Hover(1);
    EXPECT_EQ(Text("LabelName"), "Create Food");
    EXPECT_EQ(Text("LabelWords"), "In Mani Ylem");
    EXPECT_EQ(Text("LabelMana"), "4 mana");
    EXPECT_EQ(Text("LabelCost"), std::to_string(State().Spells(1).Cost) + " gold");
}

TEST_F(PageTest, Hover_ColoursTheTithes) {
    struct Row {
        const char* name;
        int need;
        i32 tithes;
        Colour ground;
    };
    StartWithMira();
    ShowPage(12);
    for (const Row& row :
         {Row{"no cost", 0, 0, kButtonFace}, Row{"plenty", 10, 31, kButtonFace},
          Row{"thirty", 10, 30, kWarn}, Row{"one", 1, 1, kWarn}, Row{"none", 10, 0, kRed},
          Row{"plenty but not enough", 40, 31, kRed}, Row{"some but not enough", 20, 19, kRed}}) {
        State().Spells(80).Reagents(kTithes) = static_cast<unsigned char>(row.need);
        Program().Reports().OnMessage({kAssistStock, 200, row.tithes});
        Hover(1);
        Hover(0);
        EXPECT_EQ(Ground(QStringLiteral("LabelTithes")), row.ground) << row.name;
    }
}

TEST_F(PageTest, Hover_CommitsTheTithesUnderEdit) {
    StartWithMira();
    DoubleClick(Named(QStringLiteral("LabelTithes")));
    Type("321");
    Hover(0);
    EXPECT_EQ(State().CurrentTithing, 321);
    EXPECT_FALSE(Named(QStringLiteral("TxtTithes")).isVisible());
}

TEST_F(PageTest, MouseMove_OverTheBareForm_ClearsTheCountersAndKeepsTheTexts) {
    StartWithMira();
    Hover(0);
    ASSERT_EQ(CounterGround(3), kGreen);
    MoveTo(BareForm());
    for (int reagent = 1; reagent <= 13; ++reagent) {
        EXPECT_EQ(CounterGround(reagent), kWindowBackground);
    }
    EXPECT_EQ(Text("LabelName"), "Clumsy");
}

TEST_F(PageTest, MouseMove_OverAnotherControl_KeepsTheHighlight) {
    StartWithMira();
    Hover(0);
    for (const char* name : {"LabelChance(0)", "Reagent(1)", "CheckCircle(4)", "imgReg(2)",
                             "Image1(0)", "LabelTithes"}) {
        MoveTo(Named(QLatin1String(name)));
        EXPECT_EQ(CounterGround(3), kGreen) << name;
    }
}

TEST_F(PageTest, SpellIcon_RightPress_ShowsTheSpellAndNeverCasts) {
    StartWithMira();
    ShowPage(3);
    TakeLog();
    Click(Named("SpellIcon", 2), Qt::RightButton);
    EXPECT_THAT(TakeLog(), ElementsAre("info 10"));
    EXPECT_EQ(Program().TheLastCast().LastMouseButton, 2);
    DoubleClick(Named("SpellIcon", 2), Qt::RightButton);
    EXPECT_THAT(m_keys.sent, IsEmpty());
}

TEST_F(PageTest, SpellIcon_OtherButtons_Cast) {
    struct Row {
        Qt::MouseButton button;
        i16 number;
    };
    StartWithMira();
    for (const Row& row : {Row{Qt::LeftButton, 1}, Row{Qt::MiddleButton, 4}}) {
        m_keys.sent.clear();
        Click(Named("SpellIcon", 0), row.button);
        EXPECT_EQ(Program().TheLastCast().LastMouseButton, row.number);
        EXPECT_EQ(m_keys.sent.size(), 1U);
    }
}

TEST_F(PageTest, SpellIcon_LetGoOutside_DoesNotCast) {
    StartWithMira();
    QWidget& icon = Named("SpellIcon", 0);
    QWindow* window = Form().windowHandle();
    QTest::mousePress(window, Qt::LeftButton, {}, icon.mapTo(&Form(), QPoint(5, 5)));
    EXPECT_THAT(m_keys.sent, IsEmpty());
    QTest::mouseRelease(window, Qt::LeftButton, {}, BareForm());
    EXPECT_THAT(m_keys.sent, IsEmpty());
    EXPECT_EQ(Program().TheLastCast().LastMouseButton, 1);
}

TEST_F(PageTest, SpellIcon_InfoFails_NamesTheAction) {
    StartWithMira();
    m_parts.failing = "info 0";
    Click(Named("SpellIcon", 0), Qt::RightButton);
    EXPECT_THAT(TakeFailures(),
                ElementsAre(UncaughtFailure{FailureKind::kInvalidCall, "pressing a spell"}));
}

TEST_F(PageTest, FormClick_RepaintsAndDoesNothingElse) {
    StartWithMira();
    Hover(0);
    QTest::mouseClick(Form().windowHandle(), Qt::LeftButton, {}, BareForm());
    EXPECT_THAT(TakeLog(), IsEmpty());
    EXPECT_EQ(Text("LabelName"), "Clumsy");
}

}  // namespace
}  // namespace spellwick
