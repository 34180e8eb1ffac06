// More first sessions: without the game, at its login screen, on another keyboard, with keys that
// the game does not have, and by the first steps.
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/end_to_end/first_hour_desk.h"

namespace spellwick::testing_support {
namespace {

constexpr int kSettingsButton = 2;
constexpr int kFirstShownTab = 3;  // Skills, to which the hint has led
constexpr int kPigIron = 13;
constexpr int kCurseWeapon = 0;  // of the first page of Necromancer; Pig Iron alone

// Magic Arrow on Alt+F5.
constexpr const char* kMacroFile =
    "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n<macros>\r\n"
    "\t<macro name=\"MA\" key=\"1073741886\" mousebutton=\"0\" wheelscroll=\"False\" "
    "wheelup=\"False\" alt=\"True\" ctrl=\"False\" shift=\"False\">\r\n\t\t<actions>\r\n"
    "\t\t\t<action code=\"15\" subcode=\"66\" submenutype=\"1\" />\r\n"
    "\t\t</actions>\r\n\t</macro>\r\n</macros>\r\n";

class FirstHourWays : public FirstHourTest {
  protected:
    void CountByHand(int reagent) {
        m_desk->Click(Window(), Counter(reagent));
        TypeNumber("50");
        m_desk->Tap(XKB_KEY_Return);
        m_desk->RestingPicture(Window());
        Picture("counters");
    }
    xcb_window_t Await(const char* title) {
        xcb_window_t window = 0;
        EXPECT_TRUE(WaitUntil([&] {
            window = m_desk->Session().ActiveWindow();
            return window != 0 && window != m_settings && window != Window() &&
                   m_desk->Session().WindowName(window).starts_with(title);
        })) << title;
        m_desk->RestingPicture(window);
        return window;
    }
    void Tabs(int count) {
        for (int step = 0; step < count; ++step) {
            m_desk->Tap(XKB_KEY_Tab);
        }
    }
    // On the tab Macros: the notice before and the news behind it are no refusals.
    void LoadMacros(std::string_view file) {
        constexpr int kMacros = 2;
        constexpr int kLoad = 38;
        m_desk->RestingPicture(Window());
        m_desk->Click(Window(), Command(kSettingsButton));
        m_settings = m_desk->WaitWindow("Spellwick - Settings");
        ASSERT_NE(m_settings, 0U);
        ASSERT_TRUE(WaitUntil([&] { return m_desk->Session().ActiveWindow() == m_settings; }));
        m_desk->RestingPicture(m_settings);
        m_desk->Hold(XKB_KEY_Control_L, true);
        for (int tab = kFirstShownTab; tab > kMacros; --tab) {
            m_desk->Tap(XKB_KEY_Prior);
        }
        m_desk->Hold(XKB_KEY_Control_L, false);
        m_desk->RestingPicture(m_settings);
        Tabs(kLoad);
        Picture("macros");
        m_desk->Tap(XKB_KEY_space);
        for (const char* title : {"Spellwick", "Load Macro File", "Spellwick"}) {
            const xcb_window_t box = Await(title);
            Picture("box");
            if (std::string_view(title) != "Spellwick") {
                m_desk->Type(file);
            }
            m_desk->Tap(XKB_KEY_Return);
            ASSERT_TRUE(m_desk->WaitGone(box));
        }
        m_desk->AskToClose(m_settings);
        ASSERT_TRUE(m_desk->WaitGone(m_settings));
        AwaitMainWindow();
    }
    void AwaitSteps() {
        m_steps = m_desk->WaitWindow("Spellwick - First steps");
        ASSERT_NE(m_steps, 0U);
        m_desk->RestingPicture(m_steps);
        const Area steps = FrameOf(m_steps);
        const Area settings = FrameOf(m_settings);
        EXPECT_FALSE(Overlap(steps, settings))
            << steps.x << ' ' << steps.y << ' ' << steps.width << ' ' << steps.height << ", "
            << settings.x << ' ' << settings.y << ' ' << settings.width << ' ' << settings.height;
    }
    // Presses the button of a step, 0 to 3. The last one leaves the settings.
    void Step(int step) {
        m_desk->Click(m_steps, {m_desk->AreaOf(m_steps).width - 70, 23 + 62 * step});
        if (step < 3) {
            ASSERT_TRUE(WaitUntil([&] { return m_desk->Session().ActiveWindow() == m_settings; }));
            m_desk->RestingPicture(m_settings);
        }
        Picture("step");
    }
    // From the start to the tab Game, by a cast without a client.
    void FollowTheHintOfTheGame() {
        AwaitHints(1);
        TryToCast(kClumsy);
        AnswerBox();  // the intelligence
        AnswerBox();  // the client
        AwaitHints(2);
        FollowIntoSettings(0);
    }
    // From the tab Game, where the game is found by now.
    void FinishByFirstSteps() {
        Picture("game_found");
        constexpr Place kFirstStepsButton{47, 48};
        m_desk->Click(m_settings, kFirstStepsButton);
        AwaitSteps();
        EnterAllBySteps();
        TryToCast(kClumsy);
        ExpectCast("Clumsy");
    }
    void EnterAllBySteps() {
        Step(1);
        m_desk->Tap(XKB_KEY_space);
        Step(2);
        TypeSkills();
        Step(3);
        AwaitMainWindow();
        FillCounters(5);  // from Blood Moss to Nightshade
    }

    xcb_window_t m_steps = 0;
};

TEST_F(FirstHourWays, NoGameAtFirst_TheHintLeadsToTheTabGame) {
    StartSpellwick();
    FollowTheHintOfTheGame();
    StartGame();
    LogIn();
    FinishByFirstSteps();
}

TEST_F(FirstHourWays, LoginScreenFirst_TheHintLeadsToTheTabGame) {
    StartGame();
    StartSpellwick();
    FollowTheHintOfTheGame();
    LogIn();
    FinishByFirstSteps();
}

TEST_F(FirstHourWays, FrenchKeyboard_TheChordArrivesExactly) {
    ASSERT_TRUE(m_desk->Session().SetLayout("fr"));
    StartWithGame();
    MendFirstTry();
    EXPECT_EQ(Stored(kMira, "Intelligence"), "80");
    EXPECT_EQ(Stored(kMira, "SA 0"), "50");
    TryToCast(kMagicArrow);
    ExpectCast("Magic Arrow");
    EXPECT_EQ(Typed().at(0), "key Alt+5");
    ASSERT_TRUE(m_desk->Session().SetLayout("us"));
}

TEST_F(FirstHourWays, Necromancer_TheHintLeadsToTheHiddenCounters) {
    Prepare(kGlobal, {{"ShowNecroRegs", "0"}});
    StartWithGame();
    ClickPage(kNecromancer);
    TryToCast(kCurseWeapon);
    AnswerBox();  // the intelligence
    AnswerQuestion();
    AnswerBox();  // the stock
    AwaitHints(2);
    FollowIntoSettings(1);
    m_desk->Tap(XKB_KEY_space);
    PressOk();
    CountByHand(kPigIron);
    FollowIntoSettings(0);
    TypeNumber("80");
    PressOk();
    EXPECT_EQ(Stored(kMira, "PI 0"), "50");
    TryToCast(kCurseWeapon);
    ExpectCast("Curse Weapon");
}

// A character of whom all is known but the stock.
TEST_F(FirstHourWays, NoReagents_TheHintLeadsToTheFirstThatIsMissing) {
    Prepare(kMira, {{"Magery", "100"}, {"Intelligence", "100"}});
    StartWithGame();
    TryToCast(kHeal);
    AnswerQuestion();
    AnswerBox();  // the stock
    AwaitHints(1);
    ClickHint(0);
    FillCounters(5);  // from Spider's Silk to Ginseng
    TryToCast(kHeal);
    ExpectCast("Heal");
    EXPECT_EQ(m_boxes, 1);
}

// The game's key is not the one of the program, until the game's own file has been loaded.
TEST_F(FirstHourWays, OtherKeysInTheGame_ItsFileMendsThem) {
    const std::filesystem::path file = m_desk->Session().Folder() / "home" / "macros.xml";
    std::ofstream(file) << kMacroFile;
    StartGame("--client classicuo --macros '" + file.string() + "'", "ClassicUO");
    StartSpellwick();
    LogIn();
    MendFirstTry();
    TryToCast(kMagicArrow);
    EXPECT_TRUE(WaitTyped({"key Alt+5"})) << testing::PrintToString(Typed());
    LoadMacros("macros.xml");
    TryToCast(kMagicArrow);
    ExpectCast("Magic Arrow");
    EXPECT_EQ(Typed().at(1), "key Alt+F5");
}

TEST_F(FirstHourWays, FirstSteps_LeadToACastWithoutABox) {
    StartWithGame();
    AwaitHints(1);
    ClickHint(0);
    m_settings = m_desk->WaitWindow("Spellwick - Settings");
    ASSERT_NE(m_settings, 0U);
    AwaitSteps();
    EnterAllBySteps();
    TryToCast(kClumsy);
    ExpectCast("Clumsy");
    EXPECT_EQ(m_boxes, 0);
}

TEST_F(FirstHourWays, Tooltip_LetsAClickThroughToTheSpellBelow) {
    constexpr int kUpper = 24;  // in an icon
    constexpr int kLower = 57;
    StartWithGame();
    AwaitHints(1);
    const std::vector<xcb_window_t> before = Hints();
    m_desk->MoveMouse(Window(), {Spell(0).x, kUpper});
    xcb_window_t tooltip = 0;
    ASSERT_TRUE(WaitUntil([&] {
        for (const xcb_window_t window : Hints()) {
            tooltip = std::ranges::count(before, window) == 0 ? window : tooltip;
        }
        return tooltip != 0;
    }));
    // It is on the screen a moment before it lets clicks through; no hand is so quick.
    m_desk->RestingPicture(tooltip);
    Picture("tooltip");
    const Area tip = m_desk->AreaOf(tooltip);
    const Area window = m_desk->AreaOf(Window());
    const Place next{Spell(1).x, kLower};
    ASSERT_TRUE(Overlap(tip, {window.x + next.x, window.y + next.y, 1, 1}))
        << "it does not lie over the next spell";
    m_desk->MoveMouse(Window(), next);
    m_desk->PressButton(3);
    EXPECT_NE(m_desk->WaitWindow("Spellwick - Spell Info"), 0U);
}

}  // namespace
}  // namespace spellwick::testing_support
