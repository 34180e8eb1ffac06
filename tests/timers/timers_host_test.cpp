// From a cast spell to its countdown on the screen.
#include "timers/timers_host.h"

#include <QApplication>
#include <QLabel>
#include <map>

#include <gtest/gtest.h>

#include "model/timer_display.h"
#include "store/text_forms.h"
#include "tests/support/named_spells.h"
#include "tests/support/recording_desktop.h"
#include "tests/support/set_clock.h"

namespace spellwick {
namespace {

constexpr i16 kMagery120 = 1;  // rules
constexpr i16 kPlusSpirit = 16;

constexpr QRect kMainWindow(0, 0, 200, 300);

class TimersHostTest : public testing::Test, public FailureSink {
  protected:
    TimersHostTest() {
        NameSpells(m_state);
        m_state.SpellTimerMode = kTimersAsText;
        m_clock.now = 1000.0F;
    }
    void OnUncaughtFailure(const std::exception& failure, std::string_view action) override {
        FAIL() << action << ": " << failure.what();
    }

    // What the companion does, and tells the host of.
    void StartTimer(i32 row) {
        m_running.StartTimer(row);
        m_timers.Show();
    }
    void Update() {
        m_running.Update();
        m_timers.Show();
    }
    void SetMode(i32 mode) {
        m_running.SetMode(mode);
        m_timers.Show();
    }

    FormTimer* Window() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* timers = qobject_cast<FormTimer*>(window)) {
                return timers;
            }
        }
        return nullptr;
    }
    bool IsShown() { return Window() != nullptr && Window()->isVisible(); }
    std::string Shown(const char* label, int slot) {
        if (Window() == nullptr) {
            return "no window";
        }
        const auto* found = Window()->findChild<QLabel*>(
            QStringLiteral("%1(%2)").arg(QLatin1String(label)).arg(slot));
        return found != nullptr && found->isVisible() ? found->text().toStdString() : "";
    }

    SharedState m_state;
    SetClock m_clock;
    RecordingDesktop m_desktop;
    std::map<std::string, std::string, std::less<>> m_saved{{"TimerTop", "3000"},
                                                            {"TimerLeft", "615"}};
    int m_placesRead = 0;
    RunningTimers m_running{m_state, m_clock};
    TimersHost m_timers{{.timers = m_running,
                         .state = m_state,
                         .desktop = m_desktop,
                         .failures = *this,
                         .keepsClear = [] { return std::vector<QRect>{kMainWindow}; }},
                        [this](std::string_view key) {
                            ++m_placesRead;
                            return ReadFloat(m_saved.find(key)->second);
                        }};
};

TEST_F(TimersHostTest, Place_NeverMoved_StaysUnsavedWhereverTheWindowStands) {
    m_saved = {{"TimerTop", "0"}, {"TimerLeft", "0"}};
    m_running.CreateNewSpellTimer(1, 60);
    m_timers.Show();
    ASSERT_NE(Window()->pos(), QPoint(0, 0)) << "the main window stands there";
    EXPECT_FALSE(Window()->geometry().intersects(kMainWindow));
    EXPECT_EQ(m_timers.TimerPlace().top, 0.0F);
    EXPECT_EQ(m_timers.TimerPlace().left, 0.0F);
    Window()->move(310, 220);
    EXPECT_EQ(m_timers.TimerPlace().top, 3300.0F);
    EXPECT_EQ(m_timers.TimerPlace().left, 4650.0F);
}

TEST_F(TimersHostTest, Cast_LastsByItsRuleAndTheValuesOfThatMoment) {
    m_state.Spells(7).File5 = kMagery120;
    m_state.Magery = 50;
    StartTimer(7);
    m_state.Magery = 100;
    StartTimer(7);
    EXPECT_EQ(Shown("lblSpellName", 0), "Spell 7");
    EXPECT_EQ(Shown("lblTimeRemaining", 0), "60");
    EXPECT_EQ(Shown("lblTimeRemaining", 1), "120");
    m_clock.now = 1010.0F;
    Update();
    EXPECT_EQ(Shown("lblTimeRemaining", 0), "50");
}

TEST_F(TimersHostTest, SpellThatDoesNotLast_MakesNoWindow) {
    m_state.Magery = 0;
    m_state.Spells(7).File5 = kMagery120;
    for (const i16 rule : std::initializer_list<i16>{0, kMagery120, 25, -1}) {
        m_state.Spells(7).File5 = rule;
        StartTimer(7);
    }
    EXPECT_EQ(Window(), nullptr);
    Update();
    EXPECT_EQ(Window(), nullptr);
    EXPECT_EQ(m_placesRead, 0);
}

TEST_F(TimersHostTest, OneSecond_CountsAndLessDoesNot) {
    m_state.Spells(64).File5 = kPlusSpirit;
    m_state.SpiritSpeak = -1;  // 0.7 seconds
    StartTimer(64);
    EXPECT_EQ(Window(), nullptr);
    m_state.SpiritSpeak = 0;
    StartTimer(64);
    EXPECT_EQ(Shown("lblTimeRemaining", 0), "1");
}

TEST_F(TimersHostTest, Place_IsReadOnceInTwipsAndGivenBackInTwips) {
    const WindowPlaces::Place place = m_timers.TimerPlace();
    EXPECT_EQ(Window()->pos(), QPoint(41, 200));
    EXPECT_EQ(place.top, 3000.0F);
    EXPECT_EQ(place.left, 615.0F);
    Window()->move(-10, 7);
    EXPECT_EQ(m_timers.TimerPlace().left, -150.0F);
    EXPECT_EQ(m_timers.TimerPlace().top, 105.0F);
    EXPECT_EQ(m_placesRead, 2);
    EXPECT_FALSE(IsShown());
}

TEST_F(TimersHostTest, PlaceThatIsNoNumber_CountsAs0AndIsMendedByTheNextSave) {
    for (const char* bad : {"", "here", "1e30", "1e400", "-1e30"}) {
        SCOPED_TRACE(bad);
        m_saved.find("TimerTop")->second = bad;
        TimersHost timers({m_running, m_state, m_desktop, *this}, [this](std::string_view key) {
            return ReadFloat(m_saved.find(key)->second);
        });
        const WindowPlaces::Place place = timers.TimerPlace();
        EXPECT_EQ(place.top, 0.0F);
        EXPECT_EQ(place.left, 615.0F);
    }
}

TEST_F(TimersHostTest, PlaceAtTheEndOfTheNumbers_IsFarAwayAndNoMore) {
    m_saved.find("TimerTop")->second = "3.22e10";
    m_saved.find("TimerLeft")->second = "-3.22e10";
    static_cast<void>(m_timers.TimerPlace());
    EXPECT_EQ(Window()->pos(), QPoint(-1000000, 1000000));
}

TEST_F(TimersHostTest, SetMode_StoresTheModeAndShowsIt) {
    m_state.Spells(7).File5 = kMagery120;
    m_state.Magery = 50;
    StartTimer(7);
    EXPECT_TRUE(IsShown());
    SetMode(kTimersOff);
    EXPECT_EQ(m_state.SpellTimerMode, kTimersOff);
    EXPECT_FALSE(IsShown());
    SetMode(kTimersAsIcons);
    EXPECT_TRUE(IsShown());
    EXPECT_EQ(Shown("lblSpellName", 0), "");
}

}  // namespace
}  // namespace spellwick
