// A new player's first session: an empty store, the boxes and hints on the way to the first right
// cast, and at most two such boxes.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "platform/linux/x11_connection.h"
#include "tests/end_to_end/player_desk.h"

namespace spellwick::testing_support {

// Of CheckCircle.
inline constexpr int kThirdCircle = 4;
inline constexpr int kNecromancer = 10;
inline constexpr int kPaladin = 12;
inline constexpr int kMagicArrow = 4;  // Sulfurous Ash alone
inline constexpr int kFireball = 1;    // of the third circle; Black Pearl alone

class FirstHourTest : public PlayerDesk {
  protected:
    void SetUp() override {
        PlayerDesk::SetUp();
        if (m_desk) {
            std::filesystem::remove_all(StoreFile().parent_path());
        }
    }
    void LogIn() {
        TellGame("login 1");
        ASSERT_TRUE(WaitCharacter("Mira Talon"));
        m_desk->RestingPicture(Window());
    }
    void StartWithGame() {
        StartGame();
        StartSpellwick();
        LogIn();
    }

    void ClickPage(int button) {
        const Place first = Spell(0);
        Place place{first.x - 5 + 35 * button, 91};
        if (button >= kNecromancer) {
            place = {Spell(7).x + 46, button == kNecromancer ? 15 : 65};
        }
        m_desk->Click(Window(), place);
        m_desk->RestingPicture(Window());
    }
    // The mouse does not rest on a spell, whose tooltip would look like a hint.
    void TryToCast(int slot) {
        ClickSpell(slot);
        m_desk->MoveMouse({1270, 1010});
    }
    // Answers the box that stands, in the way that its default button does.
    void AnswerQuestion() {
        AnswerBox();
        --m_boxes;
    }
    void AnswerBox() {
        xcb_window_t box = 0;
        ASSERT_TRUE(WaitUntil([&] {
            box = m_desk->Session().ActiveWindow();
            return box != Window() && m_desk->Session().WindowName(box) == "Spellwick";
        })) << "no box stands";
        m_desk->RestingPicture(box);
        EXPECT_TRUE(Hints().empty()) << "no hint comes before the box is closed";
        m_desk->Tap(XKB_KEY_Return);
        ASSERT_TRUE(m_desk->WaitGone(box));
        ++m_boxes;
    }
    // With the frame that the window manager gives it.
    Area FrameOf(xcb_window_t window) const {
        xcb_connection_t* x = m_desk->Session().Connection();
        for (xcb_window_t parent = window; parent != m_desk->Session().Root();) {
            window = parent;
            const auto tree = OwnReply(xcb_query_tree_reply(x, xcb_query_tree(x, window), nullptr));
            parent = tree == nullptr ? m_desk->Session().Root() : tree->parent;
        }
        return m_desk->AreaOf(window);
    }
    static bool Overlap(const Area& one, const Area& other) {
        return one.x < other.x + other.width && other.x < one.x + one.width &&
               one.y < other.y + other.height && other.y < one.y + one.height;
    }
    void AwaitHints(std::size_t count) {
        ASSERT_TRUE(WaitUntil([&] { return Hints().size() == count; }))
            << Hints().size() << " hints";
        for (const xcb_window_t hint : Hints()) {
            EXPECT_FALSE(Overlap(m_desk->AreaOf(hint), m_desk->AreaOf(Window())));
            if (const xcb_window_t game = m_desk->FindWindow("Ultima Online")) {
                EXPECT_FALSE(Overlap(m_desk->AreaOf(hint), m_desk->AreaOf(game)));
            }
            EXPECT_NE(m_desk->Session().FocusedWindow(), hint);
        }
    }
    void ClickHint(std::size_t index) {
        Picture("hint");
        m_desk->Click(Hints().at(index), {10, 8});
    }
    // Clicks a hint that leads into the settings.
    void FollowIntoSettings(std::size_t index) {
        ClickHint(index);
        m_settings = m_desk->WaitWindow("Spellwick - Settings");
        ASSERT_NE(m_settings, 0U);
        ASSERT_TRUE(WaitUntil([&] { return m_desk->Session().ActiveWindow() == m_settings; }));
        m_desk->RestingPicture(m_settings);
        Picture("settings");
    }
    // On the layouts us and fr; in the latter digits need Shift.
    void TypeNumber(std::string_view digits) {
        constexpr std::uint32_t kFrench[] = {
            XKB_KEY_agrave,     XKB_KEY_ampersand, XKB_KEY_eacute, XKB_KEY_quotedbl,
            XKB_KEY_apostrophe, XKB_KEY_parenleft, XKB_KEY_minus,  XKB_KEY_egrave,
            XKB_KEY_underscore, XKB_KEY_ccedilla};
        if (m_desk->Session().KeycodeOf(XKB_KEY_5) != 0) {
            m_desk->Type(digits);
            return;
        }
        m_desk->Hold(XKB_KEY_Shift_L, true);
        for (const char digit : digits) {
            m_desk->Tap(kFrench[digit - '0']);
        }
        m_desk->Hold(XKB_KEY_Shift_L, false);
    }
    // From the skill, which has the focus.
    void TypeSkills() {
        m_desk->Type("100");
        m_desk->Hold(XKB_KEY_Shift_L, true);
        m_desk->Tap(XKB_KEY_Tab);
        m_desk->Hold(XKB_KEY_Shift_L, false);
        m_desk->Type("100");
    }
    // From the counter that has the focus on; each entry is taken as it is left.
    void FillCounters(int count) {
        for (int i = 0; i < count; ++i) {
            TypeNumber("50");
            m_desk->Tap(XKB_KEY_Tab);
        }
        m_desk->RestingPicture(Window());
        Picture("counters");
    }
    void AwaitMainWindow() {
        ASSERT_TRUE(WaitUntil([&] { return m_desk->Session().ActiveWindow() == Window(); }));
        m_desk->RestingPicture(Window());
    }
    void PressOk() {
        m_desk->Hold(XKB_KEY_Alt_L, true);
        m_desk->Tap(XKB_KEY_o);
        m_desk->Hold(XKB_KEY_Alt_L, false);
        ASSERT_TRUE(m_desk->WaitGone(m_settings));
        AwaitMainWindow();
    }
    // The first try of Magic Arrow and what its two hints lead to: stock and intelligence.
    void MendFirstTry() {
        TryToCast(kMagicArrow);
        AnswerBox();  // the intelligence
        AnswerQuestion();
        AnswerBox();  // the stock
        AwaitHints(2);
        ClickHint(1);
        FillCounters(1);
        FollowIntoSettings(0);
        TypeNumber("80");
        PressOk();
    }
    // Ends the session with a cast that the game takes.
    void ExpectCast(const std::string& spell) {
        EXPECT_TRUE(WaitUntil([&] {
            const std::vector<std::string> typed = Typed();
            return std::ranges::count(typed, "cast " + spell) == 1;
        })) << testing::PrintToString(Typed());
        EXPECT_LE(m_boxes, 2);
        Picture("cast");
    }
    // For a look at what the player sees, into the folder of the variable.
    void Picture(const std::string& what) {
        if (const char* folder = std::getenv("FIRST_HOUR_PICTURES")) {
            const std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
            const std::string file = std::string(folder) + "/" + test + "_" +
                                     std::to_string(++m_pictures) + "_" + what + ".png";
            EXPECT_EQ(m_desk->Session().Run({"import", "-window", "root", file}).exitCode, 0);
        }
    }

    xcb_window_t m_settings = 0;
    int m_boxes = 0;
    int m_pictures = 0;
};

}  // namespace spellwick::testing_support
