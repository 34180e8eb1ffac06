#include "store/macro_xml.h"

#include <algorithm>
#include <charconv>

#include "text/lower_case.h"

namespace spellwick {

std::string_view ValueOf(const XmlAttributes& attributes, std::string_view name) {
    const auto found =
        std::ranges::find(attributes, name, &std::pair<std::string, std::string>::first);
    return found != attributes.end() ? std::string_view(found->second) : std::string_view();
}

i32 NumberOf(const XmlAttributes& attributes, std::string_view name) {
    const std::string_view text = ValueOf(attributes, name);
    i32 number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

bool IsOn(const XmlAttributes& attributes, std::string_view name) {
    const std::string value = LowerCase(ValueOf(attributes, name));
    return value == "true" || value == "1";
}

}  // namespace spellwick
