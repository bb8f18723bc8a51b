// The value types of the public interface. They match the automation types that hosts pass.
#pragma once

#include <array>
#include <chrono>
#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quill1xml {

/// UTF-16 text that is only read during the call it is passed to; lengths are counted in UTF-16 units.
using Text = std::u16string_view;
using Integer = std::int16_t;  ///< 16-bit integer
using Long = std::int32_t;     ///< 32-bit integer
using Double = double;
using Boolean = bool;
using VariantText = Text;        ///< text that automation hosts pass in a variant
using VariantInteger = Integer;  ///< 16-bit integer that automation hosts pass in a variant
using Bytes = std::vector<std::uint8_t>;

/// The character of each byte of a single-byte code page.
using CodePage = std::array<char16_t, 256>;

/// An automation date: days since 30 December 1899, the time of day as the fraction. Local time, no zone.
/// A negative date counts its time of day forward from midnight, so -1.25 is 29 December 1899, 06:00.
struct Date {
    double days = 0;

    friend constexpr bool operator==(Date, Date) = default;

    /// The date of a calendar day and time. Requires year 100 to 9999 and a time that exists.
    /// Throws error 5 (Invalid procedure call) otherwise.
    static Date of(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

    /// Reads "yyyy-MM-dd", "yyyy-MM-ddThh:mm" or "yyyy-MM-ddThh:mm:ss" with an optional fraction.
    /// Throws error 13 (Type mismatch) for anything else, a zone suffix and impossible dates included.
    static Date fromText(Text text);

    /// Throws error 5 outside the years 100 to 9999.
    static Date fromLocalTime(std::chrono::local_seconds time);

    /// "yyyy-MM-ddThh:mm:ss", rounded to the nearest second. Throws error 5 outside the years 100 to 9999.
    std::u16string toText() const;

    /// Rounded to the nearest second. Throws error 5 outside the years 100 to 9999.
    std::chrono::local_seconds toLocalTime() const;
};

/// A fixed-point amount with four decimals, held as a count of ten-thousandths.
struct Currency {
    std::int64_t tenThousandths = 0;

    friend constexpr auto operator<=>(Currency, Currency) = default;

    /// The nearest currency value, halves to even. Throws error 6 (Overflow) beyond the range.
    static Currency fromDouble(double value);
};

/// The value of an optional text that was not given.
inline constexpr Text notGiven = u"StringDefault";

/// The value of an optional amount that was not given and may be negative. It is one digit short of the lowest double.
inline constexpr double mostNegative = -1.79769313486231E+308;

}  // namespace quill1xml
