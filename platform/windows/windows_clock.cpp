#include "platform/windows/windows_clock.h"

#include <windows.h>

namespace spellwick {

float WindowsClock::SecondsSinceMidnight() const {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    const int whole = (now.wHour * 60 + now.wMinute) * 60 + now.wSecond;
    return static_cast<float>(whole + now.wMilliseconds / 1000.0);
}

}  // namespace spellwick
