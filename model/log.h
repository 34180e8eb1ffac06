// Lines for whoever looks after a trouble: standard error, one line each.
#pragma once

#include <string_view>

namespace spellwick {

void LogLine(std::string_view line);

}  // namespace spellwick
