# spellwick_embed_text(FILE FUNCTION): writes FUNCTION.cpp into the folder of what is built here, with a
# function of that name that returns the file's text.
function(spellwick_embed_text file function)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    file(READ ${file} text)
    file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${function}.cpp @ONLY CONTENT
[[#include <string_view>

namespace spellwick {

std::string_view @function@();

std::string_view @function@() {
    return R"table(@text@)table";
}

}  // namespace spellwick
]])
endfunction()
