// The options of typing on the Game tab.
#include "settings_dialog/typing_options.h"

#include <QWheelEvent>

#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TypingOptionsTest : public SettingsFixture {
  protected:
    void OpenTab() { OpenAt(8); }
    TimeBox& Hold() { return Named<TimeBox>("SpinHold"); }
    TimeBox& Gap() { return Named<TimeBox>("SpinGap"); }
};

TEST_F(TypingOptionsTest, Open_ShowsTheDefaults) {
    OpenTab();
    EXPECT_EQ(Hold().text(), QStringLiteral("4 ms"));
    EXPECT_EQ(Gap().text(), QStringLiteral("4 ms"));
    EXPECT_FALSE(Named<QCheckBox>("CheckEnter").isChecked());
}

TEST_F(TypingOptionsTest, Open_ShowsWhatIsSavedAndSavesNothing) {
    SetSaved("Settings", "TextHold", "12");
    SetSaved("Settings", "TextGap", "30");
    SetSaved("Settings", "EnterOpensChat", "True");
    Open();
    TakeLog();
    ShowTab(8);
    EXPECT_EQ(Hold().value(), 12);
    EXPECT_EQ(Gap().value(), 30);
    EXPECT_TRUE(Named<QCheckBox>("CheckEnter").isChecked());
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(TypingOptionsTest, Enter_ClickStoresAndSavesAtOnce) {
    OpenTab();
    Click("CheckEnter");
    EXPECT_TRUE(m_state.EnterOpensChat);
    EXPECT_THAT(TakeLog(), ElementsAre("option EnterOpensChat True"));
    Click("CheckEnter");
    EXPECT_FALSE(m_state.EnterOpensChat);
    EXPECT_THAT(TakeLog(), ElementsAre("option EnterOpensChat False"));
}

TEST_F(TypingOptionsTest, Times_AreStoredAndSaved) {
    OpenTab();
    Hold().setFocus();
    Press(Qt::Key_Up);
    EXPECT_EQ(m_state.TextHold, 5);
    EXPECT_THAT(TakeLog(), ElementsAre("option TextHold 5"));
    Gap().setFocus();
    Press(Qt::Key_Down);
    EXPECT_EQ(m_state.TextGap, 3);
    EXPECT_THAT(TakeLog(), ElementsAre("option TextGap 3"));
    EXPECT_EQ(Saved("Settings", "TextGap"), "3");
}

TEST_F(TypingOptionsTest, Times_StayInTheirRange) {
    OpenTab();
    EXPECT_EQ(Hold().minimum(), 1);
    EXPECT_EQ(Hold().maximum(), 200);
    Gap().setValue(9999);
    EXPECT_EQ(m_state.TextGap, 200);
}

TEST_F(TypingOptionsTest, Wheel_ChangesNothing) {
    OpenTab();
    QWheelEvent turn(QPointF(5, 5), Hold().mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, 120),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Hold(), &turn);
    EXPECT_EQ(m_state.TextHold, 4);
    EXPECT_THAT(TakeLog(), IsEmpty());
}

}  // namespace
}  // namespace spellwick
