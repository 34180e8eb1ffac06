// A click on a spell, as the window system delivers it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SpellClickTest : public MainWindowFixture {};

TEST_F(SpellClickTest, Click_CastsAndDrawsTheDebit) {
    StartWithMira();
    ClickSpell(0);
    EXPECT_THAT(m_keys.sent, ElementsAre("%1{ENTER}"));
    EXPECT_EQ(Text("Reagent", 3), "49");
    EXPECT_EQ(Text("Reagent", 7), "49");
    EXPECT_EQ(Text("LabelAmount", 0), " 49");
    EXPECT_EQ(FocusName(), "CheckCircle(0)");
}

TEST_F(SpellClickTest, CastSpell_OtherModifiers_Cast) {
    struct Row {
        const char* name = nullptr;
        Qt::KeyboardModifiers modifiers;
        i16 mask = 0;
    };
    StartWithMira();
    ShowPage(2);
    for (const Row& row : {Row{"none", Qt::NoModifier, 0}, Row{"Shift", Qt::ShiftModifier, 1},
                           Row{"Ctrl and Shift", Qt::ControlModifier | Qt::ShiftModifier, 3},
                           Row{"Alt", Qt::AltModifier, 4},
                           Row{"Ctrl and Alt", Qt::ControlModifier | Qt::AltModifier, 6}}) {
        SCOPED_TRACE(row.name);
        m_keys.sent.clear();
        ClickSpellWith(0, row.modifiers);
        EXPECT_EQ(Program().TheLastCast().LastMouseShift, row.mask);
        EXPECT_EQ(m_keys.sent.size(), 1U);
    }
}

TEST_F(SpellClickTest, CastSpell_CtrlWithALockKeyOrTheKeypad_StillCredits) {
    StartWithMira();
    ClickSpellWith(0, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(Program().TheLastCast().LastMouseShift, 2);
    EXPECT_THAT(m_keys.sent, IsEmpty());
    EXPECT_EQ(Text("Reagent", 3), "51");
}

}  // namespace
}  // namespace spellwick
