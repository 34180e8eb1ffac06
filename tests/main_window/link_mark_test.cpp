#include "main_window/link_mark.h"

#include <QPushButton>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

class LinkMarkTest : public MainWindowFixture {
  protected:
    LinkMark& Mark() { return Named<LinkMark>(QStringLiteral("LinkMark")); }
};

TEST_F(LinkMarkTest, SaysWithWhomTheProgramIsLinkedAndWhoPays) {
    StartWithMira();
    EXPECT_EQ(Mark().toolTip(), QStringLiteral("No assist tool: casts are paid at the click"));
    EXPECT_FALSE(Mark().IsFilled());
    EXPECT_EQ(Mark().focusPolicy(), Qt::NoFocus);
    m_state.AssistLinked = true;
    m_noLink = {.tool = "Razor v1.9",
                .kind = {.name = "Razor"},
                .since = {},
                .cast = {},
                .stock = {},
                .mana = {},
                .skill = {}};
    Tick(1);
    EXPECT_EQ(Mark().toolTip(), QStringLiteral("Linked with Razor v1.9: casts, stock, mana"));
    EXPECT_EQ(Mark().accessibleName(), Mark().toolTip());
    EXPECT_TRUE(Mark().IsFilled());
}

TEST_F(LinkMarkTest, CountThatNoToolAnswers_SaysSoInItsTooltip) {
    StartWithMira();
    const QString usual = Named<QPushButton>("Command", 3).toolTip();
    m_noLink.tool = "Razor Enhanced 0.8";
    m_noLink.kind.countsOnRequest = false;
    Program().EnableCount(true);
    Tick(1);
    EXPECT_FALSE(Named<QPushButton>("Command", 3).isEnabled());
    EXPECT_EQ(Named<QPushButton>("Command", 3).toolTip(),
              QStringLiteral("Razor Enhanced 0.8 does not count when it is asked to"));
    m_noLink = {};
    Program().EnableCount(true);
    Tick(1);
    EXPECT_TRUE(Named<QPushButton>("Command", 3).isEnabled());
    EXPECT_EQ(Named<QPushButton>("Command", 3).toolTip(), usual);
}

}  // namespace
}  // namespace spellwick
