// Numbers as text and text as numbers, the same on every platform.
//
// A number is written with up to 15 significant digits, correctly rounded, without trailing zeros: in fixed notation
// while that needs at most 15 digits before and 15 after the point, otherwise as d.dddE+17 or d.dddE-16.
#pragma once

#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml {

/// Room for any number that is written.
inline constexpr std::size_t longestNumber = 48;

/// Writes an integer in plain decimal digits and returns the end.
char16_t* writeInteger(char16_t* to, std::int64_t value);

/// Writes the general number form, with "0" before the separator. Throws error 6 (Overflow) for NaN and infinities.
/// The separator has at most three characters.
char16_t* writeNumberText(char16_t* to, double value, Text decimalSeparator);

/// Writes the invariant form: "." as point, a blank or "-" in front, no "0" before the point.
/// Throws error 6 (Overflow) for NaN and infinities.
char16_t* writeStrText(char16_t* to, double value);
char16_t* writeStrText(char16_t* to, Currency value);

/// Appends an integer in plain decimal digits.
void appendInteger(std::u16string& out, std::int64_t value);

/// Appends a number as writeNumberText writes it.
void appendNumberText(std::u16string& out, double value, Text decimalSeparator);

/// The number that a text holds: blanks around it, a sign, one decimal mark, which is a point or the separator given,
/// and an exponent are understood. Commas group three digits each, unless the comma is the separator.
/// Throws error 13 (Type mismatch) for anything else and error 6 (Overflow) beyond the range of the type.
/// Whole numbers are rounded to the nearest, halves to even.
double toDouble(Text text, Text decimalSeparator = u".");
Long toLong(Text text, Text decimalSeparator = u".");
Integer toInteger(Text text, Text decimalSeparator = u".");

/// A double as a whole number, rounded to the nearest, halves to even. Throws error 6 (Overflow) beyond the range.
Long roundToLong(double value);
Integer roundToInteger(double value);

}  // namespace quill1xml
