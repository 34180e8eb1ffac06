// A time as it stands in names of files.
#pragma once

#include <chrono>
#include <string>

namespace spellwick {

// In the system's time zone: 20011231-235959.
std::string TimeText(std::chrono::system_clock::time_point time);

}  // namespace spellwick
