// The main window as a screen reader finds it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "companion/spell_tip.h"
#include "tests/main_window/page_fixture.h"
#include "tests/support/spoken_tree.h"

namespace spellwick {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class SpokenTest : public PageTest {
  protected:
    QAccessibleInterface& PartOf(QWidget& control) {
        return *QAccessible::queryAccessibleInterface(&control);
    }
};

TEST_F(SpokenTest, EveryControl_HasNameRoleAndKeyboardWay) {
    constexpr int kLeast = 60;
    for (const bool vertical : {false, true}) {
        State() = {};
        StartWithMira();
        if (vertical) {
            Program().LayoutVertical();
        }
        Hover(0);
        std::vector<std::string> faults;
        int seen = 0;
        FindSpokenFaults(PartOf(Form()), faults, seen);
        EXPECT_THAT(faults, IsEmpty());
        EXPECT_GT(seen, kLeast);
    }
}

TEST_F(SpokenTest, Window_IsNamedByCharacterAndServer) {
    StartWithMira();
    EXPECT_EQ(PartOf(Form()).role(), QAccessible::Window);
    EXPECT_THAT(SpokenNameOf(Form()), HasSubstr("Mira Talon"));
    EXPECT_THAT(SpokenNameOf(Form()), HasSubstr("Atlantic"));
}

TEST_F(SpokenTest, SpellIcon_SpeaksNameAmountAndChance_AndCastsWhenItIsPressed) {
    StartWithMira();
    QAccessibleInterface& icon = PartOf(Icon(0));
    EXPECT_EQ(icon.role(), QAccessible::Button);
    EXPECT_EQ(SpokenNameOf(icon), SpokenSpell(State(), Program().Shown(), 0));
    EXPECT_THAT(SpokenNameOf(icon), HasSubstr("Clumsy, 50 castable, "));
    ASSERT_NE(icon.actionInterface(), nullptr);
    icon.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(m_keys.sent.size(), 1U);
    EXPECT_THAT(SpokenNameOf(icon), HasSubstr("Clumsy, 49 castable, "));
    TakeLog();
}

TEST_F(SpokenTest, Figures_AreToldWithTheirNumbers) {
    StartWithMira();
    Hover(3);
    EXPECT_EQ(SpokenNameOf(Named("LabelAmount", 3)), "Amount castable of Heal: 50");
    EXPECT_EQ(SpokenNameOf(Named("LabelChance", 3)),
              "Chance in percent of Heal: " + Text("LabelChance", 3));
    EXPECT_EQ(SpokenNameOf(Named(QStringLiteral("LabelTithes"))), "Tithing points: 500");
    EXPECT_EQ(SpokenNameOf(Named(QStringLiteral("LabelMana"))), "Mana of the spell: 4 mana");
    EXPECT_EQ(SpokenNameOf(Named(QStringLiteral("ComboReagent"))), "Bag");
}

TEST_F(SpokenTest, Arrows_AreASpinBoxWithAValue) {
    StartWithMira();
    QAccessibleInterface& arrows = PartOf(Named("UpDown1", 5));
    EXPECT_EQ(arrows.role(), QAccessible::SpinBox);
    EXPECT_EQ(SpokenNameOf(arrows), "Garlic up and down");
    ASSERT_NE(arrows.valueInterface(), nullptr);
    EXPECT_EQ(arrows.valueInterface()->currentValue().toInt(), 50);
    EXPECT_EQ(arrows.valueInterface()->maximumValue().toInt(), 999);
    arrows.valueInterface()->setCurrentValue(7);
    EXPECT_EQ(State().ReagentStock(5, 0), 7);
    EXPECT_EQ(LabelAmount(3).text(), QStringLiteral(" 7"));
}

TEST_F(SpokenTest, PageButton_SaysWhetherItIsPressed) {
    StartWithMira();
    for (const int page : {2, 5}) {
        ShowPage(page);
        EXPECT_TRUE(PartOf(Named("CheckCircle", page)).state().checked);
        EXPECT_FALSE(PartOf(Named("CheckCircle", 3)).state().checked);
    }
    PartOf(Named("CheckCircle", 3))
        .actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(Shown().pressedPage, 3);
}

TEST_F(SpokenTest, Ankh_OpensTheTithes) {
    StartWithMira();
    PartOf(Named(QStringLiteral("ImageAnkh")))
        .actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(Named(QStringLiteral("TxtTithes")).isVisible());
}

}  // namespace
}  // namespace spellwick
