// Automation dates as calendar fields and as text.
#pragma once

#include "quill1xml/types.hpp"

#include <cstddef>
#include <string>

namespace quill1xml {

struct CalendarTime {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// The calendar day and time of a date, rounded to the nearest second.
/// Throws error 5 (Invalid procedure call) outside the years 100 to 9999.
CalendarTime toCalendar(Date date);

/// The characters of a date as text.
inline constexpr std::size_t dateTextSize = 19;

/// Writes "yyyy-MM-ddThh:mm:ss", on the 24-hour clock, and returns the end. Throws as toCalendar.
char16_t* writeDateText(char16_t* to, Date date);

/// Appends a date as writeDateText writes it.
void appendDateText(std::u16string& out, Date date);

/// Appends a number of at least the given digits, with leading zeros.
void appendPadded(std::u16string& out, int value, int digits);

}  // namespace quill1xml
