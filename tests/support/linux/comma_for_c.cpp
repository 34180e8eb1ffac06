#include "tests/support/comma_for_c.h"

#include <clocale>
#include <cstdlib>
#include <fstream>
#include <string>

namespace spellwick {

// The C library reads only compiled locales, and the system may not have one with a comma.
// localedef warns about missing categories but writes this one anyway.
bool SetCommaForC(const std::filesystem::path& folder) {
    const std::filesystem::path source = folder / "source";
    std::ofstream(source) << "LC_NUMERIC\n"
                             "decimal_point \"<U002C>\"\n"
                             "thousands_sep \"<U002E>\"\n"
                             "grouping 3;3\n"
                             "END LC_NUMERIC\n";
    const std::string command = "localedef -c -f ANSI_X3.4-1968 -i " + source.string() + " " +
                                (folder / "comma").string() + " 2>" +
                                (folder / "complaints").string();
    const int status = std::system(command.c_str());
    setenv("LOCPATH", folder.c_str(), 1);
    return status != -1 && std::setlocale(LC_NUMERIC, "comma") != nullptr;
}

void TakeCommaBack() {
    std::setlocale(LC_NUMERIC, "C");
    unsetenv("LOCPATH");
}

}  // namespace spellwick
