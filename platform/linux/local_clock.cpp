#include "platform/linux/local_clock.h"

#include <ctime>

namespace spellwick {

float LocalClock::SecondsSinceMidnight() const {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    tm local{};
    localtime_r(&now.tv_sec, &local);
    const int whole = (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec;
    return static_cast<float>(whole + static_cast<double>(now.tv_nsec) / 1e9);
}

std::chrono::system_clock::time_point LocalClock::Now() const {
    return std::chrono::system_clock::now();
}

std::tm LocalClock::Local(std::time_t time) const {
    std::tm parts{};
    localtime_r(&time, &parts);
    return parts;
}

}  // namespace spellwick
