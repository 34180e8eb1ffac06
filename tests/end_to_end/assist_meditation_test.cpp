// Meditation that a report of the assist tool starts while a list of ours is open.
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include "platform/linux/x11_connection.h"
#include "tests/end_to_end/tool_desk.h"

namespace spellwick::testing_support {
namespace {

class ReportedMeditation : public ToolDesk {
  protected:
    // Whether a program has the keyboard to itself, as one with an open list has.
    bool IsKeyboardGrabbed() const {
        xcb_connection_t* x = m_desk->Session().Connection();
        const auto reply = OwnReply(xcb_grab_keyboard_reply(
            x,
            xcb_grab_keyboard(x, 0, m_desk->Session().Root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                              XCB_GRAB_MODE_ASYNC),
            nullptr));
        if (reply && reply->status == XCB_GRAB_STATUS_SUCCESS) {
            xcb_ungrab_keyboard(x, XCB_CURRENT_TIME);
            m_desk->Session().Sync();
            return false;
        }
        return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
    }
};

TEST_F(ReportedMeditation, OpenListOfBags_IsClosedAndTheGameGetsTheKeys) {
    PrepareMage(kMira, 10);
    Prepare(kGlobal, {{"Meditate", "1"}, {"MeditateLevel", "20"}});
    StartAll();
    TellTool("mana 60");
    ASSERT_TRUE(WaitQuiet());
    constexpr Place kArrowOfTheBags{286, 91};
    m_desk->Click(Window(), kArrowOfTheBags);
    ASSERT_TRUE(WaitUntil([this] { return IsKeyboardGrabbed(); }));
    const std::size_t typed = Typed().size();
    TellTool("mana 10");
    EXPECT_TRUE(WaitUntil([&] { return Typed().size() > typed; })) << "Meditation is typed";
    EXPECT_FALSE(IsKeyboardGrabbed());
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kMira, "CurrentReagentBag"), "0") << "no key went into the list";
}

}  // namespace
}  // namespace spellwick::testing_support
