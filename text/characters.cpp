#include "text/characters.h"

#include "text/utf8.h"

namespace spellwick {

std::size_t CountCharacters(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); ++count) {
        TakeCodePoint(text);
    }
    return count;
}

std::string_view FirstCharacters(std::string_view text, std::size_t count) {
    return text.substr(0, text.size() - SkipCharacters(text, count).size());
}

std::string_view SkipCharacters(std::string_view text, std::size_t count) {
    for (; count > 0 && !text.empty(); --count) {
        TakeCodePoint(text);
    }
    return text;
}

std::string_view LastCharacters(std::string_view text, std::size_t count) {
    const std::size_t all = CountCharacters(text);
    return all <= count ? text : SkipCharacters(text, all - count);
}

}  // namespace spellwick
