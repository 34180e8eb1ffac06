// The window of the running timers with recording doubles and a clock that the test sets.
#pragma once

#include <QGuiApplication>
#include <QTest>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "model/timer_display.h"
#include "tests/support/named_spells.h"
#include "tests/support/recording_desktop.h"
#include "tests/support/set_clock.h"
#include "timers/form_timer.h"

namespace spellwick {

class FormTimerTest : public testing::Test, public FailureSink {
  protected:
    FormTimerTest() {
        NameSpells(m_state);
        m_state.SpellTimerMode = kTimersAsIcons;
        m_clock.now = 1000.0F;
    }
    void TearDown() override { EXPECT_EQ(m_failures, 0); }
    void OnUncaughtFailure(const std::exception& /*failure*/,
                           std::string_view /*action*/) override {
        ++m_failures;
    }

    // Without running timers, as when the program starts.
    FormTimer& Make(QPoint place = {40, 50}) {
        m_form.reset();
        m_timers.emplace(m_state, m_clock);
        m_form = std::make_unique<FormTimer>(
            TimerServices{.timers = *m_timers,
                          .state = m_state,
                          .desktop = m_desktop,
                          .failures = *this,
                          .keepsClear = [this] { return m_keepsClear; }},
            place);
        return *m_form;
    }
    template <typename Part>
    Part& Named(const char* name, int index) {
        auto* part =
            m_form->findChild<Part*>(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index));
        if (part == nullptr) {
            throw std::logic_error(name);
        }
        return *part;
    }
    TimerLabel& Name(int slot) { return Named<TimerLabel>("lblSpellName", slot); }
    TimerLabel& Seconds(int slot) { return Named<TimerLabel>("lblTimeRemaining", slot); }
    IconPicture& Picture(int slot) { return Named<IconPicture>("imgSpell", slot); }
    TimerBar& Bar(int slot) { return Named<TimerBar>("picProg", slot); }
    TimerControl& Control(int index) { return Named<TimerControl>("lblControls", index); }

    std::vector<std::string> ShownNames() {
        std::vector<std::string> names;
        for (int slot = 0; slot < kTimerSlots; ++slot) {
            if (Name(slot).isVisible()) {
                names.push_back(Name(slot).text().toStdString());
            }
        }
        return names;
    }
    void TickAt(float now) {
        m_clock.now = now;
        m_timers->Update();
        m_form->ShowTimers();
    }
    void Start(i16 row, i16 seconds) {
        m_timers->CreateNewSpellTimer(row, seconds);
        m_form->ShowTimers();
    }
    void SetMode(i32 mode) {
        m_timers->SetMode(mode);
        m_form->ShowTimers();
    }

    SharedState m_state;
    SetClock m_clock;
    RecordingDesktop m_desktop;
    std::vector<QRect> m_keepsClear;
    std::optional<RunningTimers> m_timers;
    std::unique_ptr<FormTimer> m_form;
    int m_failures = 0;
};

}  // namespace spellwick
