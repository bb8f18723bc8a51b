#include "text/date.hpp"

#include "quill1xml/text.hpp"
#include "support/expect_error.hpp"
#include "support/text_printer.hpp"

#include <limits>
#include <sstream>
#include <string>

namespace quill1xml {
namespace {

using testing::expectError;
using testing::utf8;

constexpr double second = 1.0 / 86400;

std::string text(double days) {
    std::u16string text;
    appendDateText(text, {days});
    return utf8(text);
}

TEST(Dates, AreRoundedToTheSecond) {
    const struct {
        double days;
        const char* expected;
    } cases[] = {
        {0, "1899-12-30T00:00:00"},
        {36585 + 23.0 / 24, "2000-02-29T23:00:00"},
        {39146 + (14 * 3600 + 7 * 60 + 9) * second, "2007-03-05T14:07:09"},
        {39146 + 0.49 * second, "2007-03-05T00:00:00"},
        {39146 + 0.51 * second, "2007-03-05T00:00:01"},
        {39146 + 86399.51 * second, "2007-03-06T00:00:00"},
        {39447 + 86399.9 * second, "2008-01-01T00:00:00"},
        // Below zero the time of day still counts forward from midnight.
        {-0.25, "1899-12-30T06:00:00"},
        {-1.75, "1899-12-29T18:00:00"},
        {-1 - 86399.9 * second, "1899-12-30T00:00:00"},
        {-657434, "0100-01-01T00:00:00"},
        {-657434.75, "0100-01-01T18:00:00"},
        {2958465 + 86399.4 * second, "9999-12-31T23:59:59"},
    };
    for (const auto& c : cases) EXPECT_EQ(text(c.days), c.expected) << c.days;
    for (const double days : {-657435.0, -657435.5, 2958465 + 86399.6 * second, 2958466.0, 1e300, -1e300,
                              std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        expectError([&] { text(days); }, 5, u"years 100 to 9999");
    }
}

TEST(Dates, AreMadeOfCalendarFields) {
    EXPECT_EQ(Date::of(2000, 1, 1).days, 36526);
    EXPECT_EQ(Date::of(1899, 12, 29, 6).days, -1.25);
    EXPECT_EQ(Date::of(100, 1, 1, 18).days, -657434.75);
    const int impossible[][6] = {{99, 12, 31},  {10000, 1, 1},       {2007, 0, 1},           {2007, 13, 1},
                                 {2007, 2, 29}, {2007, 4, 31},       {2007, 1, 0},           {2007, 1, 1, 24},
                                 {2007, 1, -1}, {2007, 1, 1, 0, 60}, {2007, 1, 1, 0, 0, 60}, {2007, 1, 1, -1}};
    for (const auto& t : impossible) {
        expectError([&] { Date::of(t[0], t[1], t[2], t[3], t[4], t[5]); }, 5, u"");
    }
}

TEST(Dates, AreLocalTimesToo) {
    using namespace std::chrono;
    const struct {
        Date date;
        local_seconds time;
    } cases[] = {
        {Date::of(1970, 1, 1), local_seconds{}},
        {Date::of(2007, 3, 5, 14, 7, 9), local_days{2007y / 3 / 5} + 14h + 7min + 9s},
        {Date::of(1899, 12, 29, 6), local_days{1899y / 12 / 29} + 6h},
        {Date::of(100, 1, 1), local_days{100y / 1 / 1}},
        {Date::of(9999, 12, 31, 23, 59, 59), local_days{9999y / 12 / 31} + 24h - 1s},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Date::fromLocalTime(c.time), c.date);
        EXPECT_EQ(c.date.toLocalTime(), c.time);
    }
    for (const local_seconds time :
         {local_seconds::min(), local_days{100y / 1 / 1} - 1s, local_days{10000y / 1 / 1} + 0s, local_seconds::max()}) {
        expectError([&] { Date::fromLocalTime(time); }, 5, u"years 100 to 9999");
    }
}

TEST(Dates, AreReadStrictly) {
    const struct {
        const char16_t* text;
        Date expected;
    } cases[] = {
        {u"2007-03-05", Date::of(2007, 3, 5)},
        {u"2007-03-05T14:07", Date::of(2007, 3, 5, 14, 7)},
        {u"2007-03-05T14:07:09", Date::of(2007, 3, 5, 14, 7, 9)},
        {u"2007-03-05T14:07:09.4999", Date::of(2007, 3, 5, 14, 7, 9)},
        {u"2007-12-31T23:59:59.5", Date::of(2008, 1, 1)},
        {u"0100-01-01T00:00:00", Date::of(100, 1, 1)},
        {u"9999-12-31T23:59:59", Date::of(9999, 12, 31, 23, 59, 59)},
    };
    for (const auto& c : cases) EXPECT_EQ(Date::fromText(c.text), c.expected) << utf8(c.text);
    for (const Text same : {u"0100-01-01T00:00:00", u"1899-12-29T18:00:00", u"9999-12-31T23:59:59"}) {
        EXPECT_EQ(Date::fromText(same).toText(), same);
    }
    std::istringstream wrongs(
        "|2007|2007-3-5|2007-03-05 | 2007-03-05|07-03-05|2007/03/05|2007-03-05 14:07:09|2007-03-05T|"
        "2007-03-05T14|2007-03-05T14:7:9|2007-03-05T14:07:|2007-03-05T14:07:09.|2007-03-05T14:07:09Z|"
        "2007-03-05T14:07:09+02:00|2007-03-05T14:07:09.5Z|2007-03-05t14:07:09|2007-02-29|2007-13-01|"
        "2007-00-01|2007-01-32|0099-12-31|2007-03-05T24:00:00|2007-03-05T23:60:00|2007-03-05T23:59:60|"
        "-2007-03-05|+007-03-05|9999-12-31T23:59:59.5|");
    for (std::string wrong; std::getline(wrongs, wrong, '|');) {
        SCOPED_TRACE(wrong);
        expectError([&] { Date::fromText(toUtf16(wrong)); }, 13, u"yyyy-MM-ddThh:mm:ss");
    }
}

}  // namespace
}  // namespace quill1xml
