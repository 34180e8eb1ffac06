#include "text/number_forms.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "text/characters.h"
#include "text/runtime_failure.h"

namespace spellwick {

namespace {

constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::size_t SkipBlanks(std::string_view text, std::size_t at) {
    while (at < text.size() && IsBlank(text[at])) {
        ++at;
    }
    return at;
}

std::size_t SkipDigits(std::string_view text, std::size_t at) {
    while (at < text.size() && IsDigit(text[at])) {
        ++at;
    }
    return at;
}

// from_chars reports overflow and underflow alike; tell which by the decimal place of the first
// nonzero digit.
bool IsBelowOne(std::string_view digits, std::string_view exponent) {
    constexpr i32 kFarAway = 1'000'000'000;
    std::int64_t shift = 0;
    for (const char c : exponent) {
        if (IsDigit(c)) {
            shift = std::min<std::int64_t>(shift * 10 + (c - '0'), kFarAway);
        }
    }
    if (exponent.starts_with('-')) {
        shift = -shift;
    }
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::size_t first = digits.find_first_not_of("0.");
    const auto place = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    return place + shift <= 0;
}

// As many digits as a double holds exactly.
constexpr std::size_t kExactDigits = 15;

double WholeNumber(std::string_view digits) {
    std::int64_t value = 0;
    for (const char c : digits) {
        value = value * 10 + (c - '0');
    }
    return static_cast<double>(value);
}

struct ParsedNumber {
    double value;
    std::size_t end;  // 0 when the text does not start with a number
};

ParsedNumber ParseNumber(std::string_view text) {
    std::size_t at = SkipBlanks(text, 0);
    const bool negative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        ++at;
    }
    const std::size_t first = at;
    at = SkipDigits(text, at);
    std::size_t digits = at - first;
    const bool isWhole =
        at == text.size() || (text[at] != '.' && text[at] != 'e' && text[at] != 'E');
    if (digits > 0 && digits <= kExactDigits && isWhole) {
        // Nearly all numbers.
        const double value = WholeNumber(text.substr(first, digits));
        return {negative ? -value : value, at};
    }
    if (at < text.size() && text[at] == '.') {
        const std::size_t point = at;
        at = SkipDigits(text, at + 1);
        digits += at - point - 1;
    }
    if (digits == 0) {
        return {0.0, 0};
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        std::size_t exponent = at + 1;
        if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) {
            ++exponent;
        }
        const std::size_t end = SkipDigits(text, exponent);
        if (end > exponent) {
            at = end;
        }
    }
    double value = 0.0;
    const auto result = std::from_chars(text.data() + first, text.data() + at, value);
    if (result.ec == std::errc::result_out_of_range) {
        // A huge number is infinite and a tiny one is 0; storing it decides what happens.
        const std::string_view number = text.substr(first, at - first);
        const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
        const std::string_view exponent = number.substr(std::min(mark + 1, number.size()));
        value = IsBelowOne(number.substr(0, mark), exponent)
                    ? 0.0
                    : std::numeric_limits<double>::infinity();
    }
    return {negative ? -value : value, at};
}

template <typename Cell>
Cell FitRounded(double value) {
    const double whole = RoundHalfEven(value);
    if (!(whole >= std::numeric_limits<Cell>::min() && whole <= std::numeric_limits<Cell>::max())) {
        throw RuntimeFailure(FailureKind::kOverflow,
                             "The value " + PlainText(value) + " does not fit.");
    }
    return static_cast<Cell>(whole);
}

}  // namespace

double NumericPrefix(std::string_view text) {
    return ParseNumber(text).value;
}

double FirstFour(std::string_view text) {
    return NumericPrefix(FirstCharacters(text, 4));
}

double RoundHalfEven(double value) {
    const double below = std::floor(value);
    const double part = value - below;
    if (part < 0.5) {
        return below;
    }
    if (part > 0.5) {
        return below + 1.0;
    }
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

i16 ToI16(double value) {
    return FitRounded<i16>(value);
}
i32 ToI32(double value) {
    return FitRounded<i32>(value);
}

i16 ToI16(i32 value) {
    if (!std::in_range<i16>(value)) {
        throw RuntimeFailure(FailureKind::kOverflow,
                             "The value " + PlainText(value) + " does not fit.");
    }
    return static_cast<i16>(value);
}

unsigned char ToByte(i32 value) {
    if (!std::in_range<unsigned char>(value)) {
        throw RuntimeFailure(FailureKind::kOverflow,
                             "The value " + PlainText(value) + " does not fit into 0 to 255.");
    }
    return static_cast<unsigned char>(value);
}

i32 TruncatingDivide(i32 dividend, i32 divisor) {
    if (divisor == 0) {
        throw RuntimeFailure(FailureKind::kDivision, "A number was to be divided by 0.");
    }
    if (dividend == std::numeric_limits<i32>::min() && divisor == -1) {
        throw RuntimeFailure(FailureKind::kOverflow, "The quotient does not fit.");
    }
    return dividend / divisor;
}

double RequiredNumber(std::string_view text) {
    const ParsedNumber number = ParseNumber(text);
    if (number.end == 0 || SkipBlanks(text, number.end) != text.size()) {
        throw RuntimeFailure(
            FailureKind::kTypeMismatch,
            "The text \"" + std::string(FirstCharacters(text, 40)) + "\" is no number.");
    }
    return number.value;
}

std::string PlainText(i32 value) {
    return std::to_string(value);
}

std::string PlainText(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    if (std::isinf(value)) {
        return value < 0 ? "-inf" : "inf";
    }
    if (value == 0.0) {
        return "0";
    }
    std::array<char, 400> buffer{};
    const double magnitude = std::fabs(value);
    if (magnitude >= 1e15) {
        const auto end =
            std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::fixed, 0).ptr;
        return {buffer.begin(), end};
    }
    // 15 significant digits, without an exponent and without trailing zeros.
    const int before =
        magnitude < 1.0 ? 0 : static_cast<int>(std::floor(std::log10(magnitude))) + 1;
    const int leadingZeros =
        magnitude < 1.0 ? static_cast<int>(std::ceil(-std::log10(magnitude))) - 1 : 0;
    const int digits = std::min(15 - before + std::max(leadingZeros, 0), 340);
    const auto end = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::fixed,
                                   std::max(digits, 0))
                         .ptr;
    std::string text(buffer.begin(), end);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') {
            text.pop_back();
        }
    }
    return text == "-0" ? "0" : text;
}

std::string StandardText(i32 value) {
    std::string text = PlainText(value);
    return value < 0 ? text : text.insert(0, 1, ' ');
}

std::string StandardText(double value) {
    std::string text = PlainText(value);
    return text.starts_with('-') ? text : text.insert(0, 1, ' ');
}

}  // namespace spellwick
