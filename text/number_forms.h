// Every way in which the program converts text to numbers and back, rounds and divides. All of it
// is independent of the locale.
#pragma once

#include <string>
#include <string_view>

#include "text/number_types.h"

namespace spellwick {

// 0 to 9.
constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The number at the start of a text: blanks, a sign, digits with a decimal point, an exponent.
// 0 for an empty text or one without such a prefix.
double NumericPrefix(std::string_view text);

// NumericPrefix of the first four characters: what the common number edit reads.
double FirstFour(std::string_view text);

// Nearest whole number, exact halves to the even neighbour.
double RoundHalfEven(double value);

// Rounds to the nearest whole number and fits it into the cell; RuntimeFailure (overflow) if it
// does not fit.
i16 ToI16(double value);
i32 ToI32(double value);
i16 ToI16(i32 value);
unsigned char ToByte(i32 value);

// Whole-number division that truncates toward zero; RuntimeFailure (division) for a divisor of 0.
i32 TruncatingDivide(i32 dividend, i32 divisor);

// Strict reading, for values that must be numbers: blanks around a number are allowed, anything
// else is a RuntimeFailure (type mismatch).
double RequiredNumber(std::string_view text);

// Decimal digits, a sign if negative, a fraction with up to 15 significant digits.
std::string PlainText(i32 value);
std::string PlainText(double value);

// The same with one leading blank for a value that is not negative.
std::string StandardText(i32 value);
std::string StandardText(double value);

}  // namespace spellwick
