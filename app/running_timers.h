// The timers of the spells that are cast: works out how long a spell lasts and has the window of
// the timers show it. The window is made at its first use.
#pragma once

#include <functional>
#include <memory>

#include "main_window/services.h"
#include "timers/form_timer.h"

namespace spellwick {

class RunningTimers : public TimersPort {
  public:
    // `savedPlace` reads where the window stood; RuntimeFailure when that is no number.
    RunningTimers(const TimerServices& services, std::function<WindowPlaces::Place()> savedPlace)
        : m_services(services), m_savedPlace(std::move(savedPlace)) {}

    void StartTimer(i32 row) override;
    void Update() override;
    WindowPlaces::Place TimerPlace() override;

    // Stores the mode of display and puts it into force.
    void SetMode(i32 mode);

  private:
    FormTimer& Window();

    TimerServices m_services;
    std::function<WindowPlaces::Place()> m_savedPlace;
    std::unique_ptr<FormTimer> m_window;
};

}  // namespace spellwick
