// The window of the running timers. Shows at most four, those that end first, as names with seconds
// or as icons with a bar. It never takes the keyboard from the game.
#pragma once

#include <QWidget>
#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "companion/running_timers.h"
#include "model/failure_guard.h"
#include "model/shared_state.h"
#include "platform/desktop.h"
#include "timers/timer_parts.h"
#include "timers/timer_plan.h"
#include "widgets/guarded_events.h"
#include "widgets/icon_picture.h"
#include "widgets/pictures.h"

namespace spellwick {

// All references outlive the window.
struct TimerServices {
    RunningTimers& timers;
    const SharedState& state;
    Desktop& desktop;
    FailureSink& failures;
    // What the window does not cover while the player has never moved it, the most important first.
    std::function<std::vector<QRect>()> keepsClear = {};
};

class FormTimer : public QWidget {
    Q_OBJECT

  public:
    // `place` is the saved position in pixels; 0 and 0 stands for a window that was never moved.
    FormTimer(const TimerServices& services, QPoint place);

    // The position to save: 0 and 0 as long as the player has never moved the window.
    QPoint KeptPlace() const { return pos() == m_aside ? QPoint() : pos(); }

    // Draws the timers' screen, and shows or hides the window by it.
    void ShowTimers();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void MakeParts();
    void MakeVisible();
    void AskForStates();
    void Arrange(const TimerScreen& screen);
    void Apply(const TimerPlan& plan);
    QSize ControlSize() const;
    void ShowText(std::size_t slot, const TimerSlot& timer);
    void ShowIcon(std::size_t slot, const TimerSlot& timer);
    void HideForUser();

    TimerServices m_services;
    RunningTimers& m_timers;
    const GuardedEvents m_events;
    IconClip m_icons;
    std::array<TimerLabel*, kTimerSlots> m_names{};      // lblSpellName
    std::array<TimerLabel*, kTimerSlots> m_seconds{};    // lblTimeRemaining
    std::array<IconPicture*, kTimerSlots> m_pictures{};  // imgSpell
    std::array<TimerBar*, kTimerSlots> m_bars{};         // picProg
    std::array<TimerControl*, 2> m_controls{};           // lblControls
    std::optional<QPoint> m_aside;  // where it stands by itself; none once the player has moved it
    bool m_dragging = false;
    QPoint m_pressPlace;  // mouse, in screen coordinates
    QPoint m_pressWindow;
    int m_asksDue = 0;  // how often to ask the desktop for the window's states in this showing
};

}  // namespace spellwick
