#include "store/text_forms.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "text/ascii_case.h"
#include "text/characters.h"
#include "text/number_forms.h"
#include "text/runtime_failure.h"

namespace spellwick {

std::string BoolText(bool value) {
    return value ? "True" : "False";
}

bool ReadBool(std::string_view text) {
    if (SameWithoutCase(text, "true")) {
        return true;
    }
    if (SameWithoutCase(text, "false")) {
        return false;
    }
    return RequiredNumber(text) != 0.0;
}

std::string FloatText(float value) {
    if (value == 0.0F || !std::isfinite(value)) {
        return "0";
    }
    // The longest finite value has 39 digits, the shortest fraction about 55 characters.
    std::array<char, 80> buffer{};
    const auto end =
        std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::fixed).ptr;
    return {buffer.begin(), end};
}

float ReadFloat(std::string_view text) {
    const double value = RequiredNumber(text);
    if (std::fabs(value) > std::numeric_limits<float>::max()) {
        throw RuntimeFailure(
            FailureKind::kOverflow,
            "The position \"" + std::string(FirstCharacters(text, 40)) + "\" does not fit.");
    }
    return static_cast<float>(value);
}

i16 ReadI16(std::string_view text) {
    return ToI16(RequiredNumber(text));
}

i32 ReadI32(std::string_view text) {
    return ToI32(RequiredNumber(text));
}

unsigned char ReadByte(std::string_view text) {
    return ToByte(ReadI32(text));
}

i16 ReadStock(std::string_view text) {
    return ToI16(NumericPrefix(text));
}

i32 ReadTithing(std::string_view text) {
    return ToI32(NumericPrefix(text));
}

}  // namespace spellwick
