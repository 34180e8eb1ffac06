#include "app/running_timers.h"

#include "model/spell_duration.h"
#include "store/catalogue.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr float kTwipsPerPixel = 15.0F;

}  // namespace

void RunningTimers::StartTimer(i32 row) {
    const i16 rule = m_services.state.Spells(row).File5;
    const i16 seconds = SpellDuration(rule, CasterOf(m_services.state));
    if (seconds >= 1) {
        Window().CreateNewSpellTimer(ToI16(row), seconds);
    }
}

void RunningTimers::Update() {
    if (m_window != nullptr) {
        m_window->Update();
    }
}

WindowPlaces::Place RunningTimers::TimerPlace() {
    const QPoint place = Window().pos();
    return {.top = static_cast<float>(place.y()) * kTwipsPerPixel,
            .left = static_cast<float>(place.x()) * kTwipsPerPixel};
}

void RunningTimers::SetMode(i32 mode) {
    Window().SetMode(mode);
}

FormTimer& RunningTimers::Window() {
    if (m_window == nullptr) {
        m_window = std::make_unique<FormTimer>(
            m_services, QPoint(SavedPixels(kTimerLeftKey), SavedPixels(kTimerTopKey)));
    }
    return *m_window;
}

int RunningTimers::SavedPixels(std::string_view key) const {
    int pixels = 0;
    IgnoreFailure([&] { pixels = ToI32(double{m_savedPosition(key) / kTwipsPerPixel}); });
    return pixels;
}

}  // namespace spellwick
