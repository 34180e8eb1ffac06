#include "timers/timers_host.h"

#include <algorithm>

#include "store/catalogue.h"
#include "store/twips.h"

namespace spellwick {

WindowPlaces::Place TimersHost::TimerPlace() {
    const QPoint place = Window().KeptPlace();
    return {.top = TwipsOf(place.y()), .left = TwipsOf(place.x())};
}

void TimersHost::Show() {
    if (m_window != nullptr || m_services.timers.Screen().visible) {
        Window().ShowTimers();
    }
}

FormTimer& TimersHost::Window() {
    if (m_window == nullptr) {
        m_window = std::make_unique<FormTimer>(
            m_services, QPoint(SavedPixels(kTimerLeftKey), SavedPixels(kTimerTopKey)));
    }
    return *m_window;
}

int TimersHost::SavedPixels(std::string_view key) const {
    // Farther than any screen; numbers close to 32 bits would overflow in the toolkit.
    constexpr int kFarthest = 1'000'000;
    int pixels = 0;
    IgnoreFailure([&] { pixels = PixelsOf(m_savedPosition(key)); });
    return std::clamp(pixels, -kFarthest, kFarthest);
}

}  // namespace spellwick
