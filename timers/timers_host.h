// The running timers and their window, which is made at its first use.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "companion/running_timers.h"
#include "store/setting_changes.h"
#include "timers/form_timer.h"

namespace spellwick {

class TimersHost {
  public:
    // `savedPosition` reads one of the two positions of the window by its key, in twips. A
    // RuntimeFailure of it counts as 0, or the program could neither start a timer nor end well.
    TimersHost(const TimerServices& services, std::function<float(std::string_view)> savedPosition)
        : m_services(services), m_savedPosition(std::move(savedPosition)) {}

    // Shows what is to be seen; a window that is not there yet is made only for that.
    void Show();

    // Where the window stands, in twips, as it is saved; makes it if need be.
    WindowPlaces::Place TimerPlace();

  private:
    FormTimer& Window();
    int SavedPixels(std::string_view key) const;

    TimerServices m_services;
    std::function<float(std::string_view)> m_savedPosition;
    std::unique_ptr<FormTimer> m_window;
};

}  // namespace spellwick
