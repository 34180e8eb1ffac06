// The window of the running timers: at most four of them, those that end first, as names with their
// seconds or as icons with a bar. It never takes the keyboard from the game.
#pragma once

#include <QWidget>
#include <array>

#include "model/failure_guard.h"
#include "model/shared_state.h"
#include "model/timer_display.h"
#include "model/timer_list.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "timers/timer_parts.h"
#include "timers/timer_plan.h"
#include "widgets/guarded_events.h"
#include "widgets/pictures.h"

namespace spellwick {

// All references outlive the window.
struct TimerServices {
    SharedState& state;
    const Clock& clock;
    Desktop& desktop;
    FailureSink& failures;
};

class FormTimer : public QWidget {
    Q_OBJECT

  public:
    // `place` is the saved position in pixels.
    FormTimer(const TimerServices& services, QPoint place);

    // Starts a timer of whole seconds for a row. RuntimeFailure (subscript) for a row outside the
    // table.
    void CreateNewSpellTimer(i16 spellNumber, i16 spellDuration);

    // Whether a timer is running; shows or hides the window by it.
    bool SpellsActive();

    // One refresh of what is shown.
    void Update();

    // Lays the window out for the mode in force and shows or hides it.
    void Arrange();

    // A TimerMode, also for the settings.
    void SetMode(i32 newMode);

    // What is due each time that the window is shown.
    void BecomeActive();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void MakeParts();
    void SortTimers();
    void MakeVisible();
    void ShowTimer(SpellTimer& timer, float now);
    void DrawBar(i16 slot, i16 percent);
    void ToggleLayout();
    void HideForUser();
    void Apply(const TimerPlan& plan);
    TimerMode Mode() const;
    QSize ControlSize() const;

    TimerServices m_services;
    SharedState& m_state;
    const GuardedEvents m_events;
    IconClip m_icons;
    TimerList m_timers;
    std::array<TimerLabel*, kTimerSlots> m_names{};       // lblSpellName
    std::array<TimerLabel*, kTimerSlots> m_seconds{};     // lblTimeRemaining
    std::array<TimerPicture*, kTimerSlots> m_pictures{};  // imgSpell
    std::array<TimerBar*, kTimerSlots> m_bars{};          // picProg
    std::array<TimerControl*, 2> m_controls{};            // lblControls
    bool m_needsResort = false;
    int m_nameWidth = 0;  // pixels
    bool m_dragging = false;
    QPoint m_pressPlace;  // of the mouse on the screen
    QPoint m_pressWindow;
    i32 m_lastMode = 0;
    bool m_horizontal = false;
    bool m_hiddenByUser = false;
    bool m_onTop = false;  // the top-most state was asked for since the window was shown
};

}  // namespace spellwick
