#include "tests/support/comma_for_c.h"

#include <clocale>

namespace spellwick {

bool SetCommaForC(const std::filesystem::path& /*folder*/) {
    return std::setlocale(LC_NUMERIC, "German_Germany.1252") != nullptr;
}

void TakeCommaBack() {
    std::setlocale(LC_NUMERIC, "C");
}

}  // namespace spellwick
