#include "model/log.h"

#include <cstdio>

namespace spellwick {

void LogLine(std::string_view line) {
    std::fprintf(stderr, "spellwick: %.*s\n", static_cast<int>(line.size()), line.data());
}

}  // namespace spellwick
