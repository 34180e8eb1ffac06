#include "platform/windows/windows_clock.h"

#include <windows.h>

namespace spellwick {

float WindowsClock::SecondsSinceMidnight() const {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    const int whole = (now.wHour * 60 + now.wMinute) * 60 + now.wSecond;
    return static_cast<float>(whole + now.wMilliseconds / 1000.0);
}

std::chrono::system_clock::time_point WindowsClock::Now() const {
    return std::chrono::system_clock::now();
}

std::tm WindowsClock::Local(std::time_t time) const {
    std::tm parts{};
    localtime_s(&parts, &time);
    return parts;
}

}  // namespace spellwick
