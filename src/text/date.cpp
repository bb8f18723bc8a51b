#include "text/date.hpp"

#include "quill1xml/error.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

namespace quill1xml {
namespace {

constexpr std::int64_t secondsPerDay = 86400;
constexpr std::chrono::sys_days dayZero = std::chrono::year{1899} / 12 / 30;
constexpr int firstYear = 100;
constexpr int lastYear = 9999;

// Whole days of 1 January of the first year and 31 December of the last.
constexpr std::int64_t firstDay = (std::chrono::sys_days{std::chrono::year{firstYear} / 1 / 1} - dayZero).count();
constexpr std::int64_t lastDay = (std::chrono::sys_days{std::chrono::year{lastYear} / 12 / 31} - dayZero).count();

[[noreturn]] void failYear() {
    throw runtimeError(RuntimeError::invalidProcedureCall, u"a date must lie in the years 100 to 9999");
}

bool hasYear(std::int64_t seconds) {
    return seconds >= firstDay * secondsPerDay && seconds < (lastDay + 1) * secondsPerDay;
}

/// Seconds since day zero at midnight, on a time line without the fold of negative automation dates.
std::int64_t toSeconds(double days) {
    if (!(days > static_cast<double>(firstDay - 1) && days < static_cast<double>(lastDay + 1))) failYear();
    const double whole = std::trunc(days);
    const double time = std::fabs(days - whole);
    const auto seconds = static_cast<std::int64_t>(whole) * secondsPerDay +
                         static_cast<std::int64_t>(std::floor(time * static_cast<double>(secondsPerDay) + 0.5));
    if (!hasYear(seconds)) failYear();
    return seconds;
}

/// Reads fixed-width fields off the front of a text.
class Fields {
public:
    explicit Fields(Text text) : rest_(text) {}

    bool atEnd() const { return rest_.empty(); }

    bool skip(char16_t c) {
        if (rest_.empty() || rest_.front() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }

    int digits(std::size_t count) {
        if (rest_.size() < count) fail();
        int value = 0;
        for (std::size_t i = 0; i < count; ++i) value = value * 10 + digit(rest_[i]);
        rest_.remove_prefix(count);
        return value;
    }

    /// A fraction of a second; true when it rounds up.
    bool fraction() {
        if (rest_.empty()) fail();
        const bool up = digit(rest_.front()) >= 5;
        for (const char16_t c : rest_) digit(c);
        rest_ = {};
        return up;
    }

    [[noreturn]] static void fail() {
        throw runtimeError(RuntimeError::typeMismatch,
                           u"a date is written yyyy-MM-dd or yyyy-MM-ddThh:mm:ss, without a zone");
    }

private:
    static int digit(char16_t c) {
        if (c < u'0' || c > u'9') fail();
        return c - u'0';
    }

    Text rest_;
};

bool exists(const CalendarTime& t) {
    const std::chrono::year_month_day day{std::chrono::year{t.year}, std::chrono::month{static_cast<unsigned>(t.month)},
                                          std::chrono::day{static_cast<unsigned>(t.day)}};
    return t.year >= firstYear && t.year <= lastYear && t.month >= 1 && t.day >= 1 && day.ok() && t.hour >= 0 &&
           t.hour < 24 && t.minute >= 0 && t.minute < 60 && t.second >= 0 && t.second < 60;
}

Date fromSeconds(std::int64_t seconds) {
    std::int64_t days = seconds / secondsPerDay;
    std::int64_t time = seconds % secondsPerDay;
    if (time < 0) {
        --days;
        time += secondsPerDay;
    }
    const double fraction = static_cast<double>(time) / static_cast<double>(secondsPerDay);
    return {days < 0 ? static_cast<double>(days) - fraction : static_cast<double>(days) + fraction};
}

std::int64_t secondsOf(const CalendarTime& t) {
    const std::chrono::sys_days day = std::chrono::year{t.year} / t.month / t.day;
    return (day - dayZero).count() * secondsPerDay + t.hour * 3600 + t.minute * 60 + t.second;
}

}  // namespace

Date Date::of(int year, int month, int day, int hour, int minute, int second) {
    const CalendarTime time{year, month, day, hour, minute, second};
    if (!exists(time)) {
        throw runtimeError(RuntimeError::invalidProcedureCall, u"no such day or time in the years 100 to 9999");
    }
    return fromSeconds(secondsOf(time));
}

Date Date::fromText(Text text) {
    Fields fields(text);
    CalendarTime time;
    time.year = fields.digits(4);
    if (!fields.skip(u'-')) Fields::fail();
    time.month = fields.digits(2);
    if (!fields.skip(u'-')) Fields::fail();
    time.day = fields.digits(2);
    bool roundUp = false;
    if (fields.skip(u'T')) {
        time.hour = fields.digits(2);
        if (!fields.skip(u':')) Fields::fail();
        time.minute = fields.digits(2);
        if (fields.skip(u':')) {
            time.second = fields.digits(2);
            if (fields.skip(u'.')) roundUp = fields.fraction();
        }
    }
    if (!fields.atEnd() || !exists(time)) Fields::fail();
    const std::int64_t seconds = secondsOf(time) + (roundUp ? 1 : 0);
    if (!hasYear(seconds)) Fields::fail();
    return fromSeconds(seconds);
}

Date Date::fromLocalTime(std::chrono::local_seconds time) {
    constexpr std::int64_t zero = std::chrono::seconds(dayZero.time_since_epoch()).count();
    const std::int64_t unixTime = time.time_since_epoch().count();
    // Times at the very beginning and end have no difference to day zero.
    constexpr std::int64_t last = std::numeric_limits<std::int64_t>::max() + zero;
    if (unixTime < firstDay * secondsPerDay + zero || unixTime > last || !hasYear(unixTime - zero)) failYear();
    return fromSeconds(unixTime - zero);
}

std::u16string Date::toText() const {
    std::u16string text;
    appendDateText(text, *this);
    return text;
}

std::chrono::local_seconds Date::toLocalTime() const {
    return std::chrono::local_seconds(dayZero.time_since_epoch() + std::chrono::seconds(toSeconds(days)));
}

CalendarTime toCalendar(Date date) {
    const std::int64_t seconds = toSeconds(date.days);
    std::int64_t days = seconds / secondsPerDay;
    std::int64_t time = seconds % secondsPerDay;
    if (time < 0) {
        --days;
        time += secondsPerDay;
    }
    const std::chrono::year_month_day ymd{dayZero + std::chrono::days{days}};
    return {static_cast<int>(ymd.year()),
            static_cast<int>(static_cast<unsigned>(ymd.month())),
            static_cast<int>(static_cast<unsigned>(ymd.day())),
            static_cast<int>(time / 3600),
            static_cast<int>(time / 60 % 60),
            static_cast<int>(time % 60)};
}

void appendPadded(std::u16string& out, int value, int digits) {
    char16_t text[12];
    int length = 0;
    for (; value > 0 || length < digits; value /= 10) text[length++] = static_cast<char16_t>(u'0' + value % 10);
    while (length > 0) out.push_back(text[--length]);
}

char16_t* writeDateText(char16_t* to, Date date) {
    constexpr Text pattern = u"0000-00-00T00:00:00";
    static_assert(pattern.size() == dateTextSize);
    const CalendarTime t = toCalendar(date);
    char16_t* const end = std::copy(pattern.begin(), pattern.end(), to);
    const auto put = [to](std::size_t after, int value) {
        for (std::size_t i = after; value > 0; value /= 10) to[--i] = static_cast<char16_t>(u'0' + value % 10);
    };
    put(4, t.year);
    put(7, t.month);
    put(10, t.day);
    put(13, t.hour);
    put(16, t.minute);
    put(19, t.second);
    return end;
}

void appendDateText(std::u16string& out, Date date) {
    char16_t text[dateTextSize];
    out.append(text, writeDateText(text, date));
}

}  // namespace quill1xml
