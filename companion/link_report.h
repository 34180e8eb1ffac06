// The state of the link with the assist tool in words, for the settings.
#pragma once

#include <string>

#include "link/link_status.h"
#include "platform/clock.h"

namespace spellwick {

// Three lines: the tool and since when, its last reports with their times, who pays for casts.
std::string LinkReport(const LinkStatus& status, bool paysAtClick, const Clock& clock);

}  // namespace spellwick
