#include "text/numbers.hpp"

#include "support/expect_error.hpp"
#include "support/text_printer.hpp"

#include <limits>

namespace quill1xml {
namespace {

using testing::expectError;
using testing::utf8;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

template <class Number>
std::string str(Number value) {
    char16_t text[longestNumber];
    return utf8(Text(text, static_cast<std::size_t>(writeStrText(text, value) - text)));
}

std::string numberText(double value, Text separator = u".") {
    std::u16string text;
    appendNumberText(text, value, separator);
    return utf8(text);
}

TEST(Numbers, AreWrittenWithFifteenDigitsInTwoNotations) {
    const struct {
        double value;
        const char* number;
        const char* str;
    } cases[] = {
        {0, "0", " 0"},
        {-0.0, "0", " 0"},
        {12.5, "12.5", " 12.5"},
        {-3, "-3", "-3"},
        {-0.25, "-0.25", "-.25"},
        {0.1 + 0.2, "0.3", " .3"},
        {200.0 / 3, "66.6666666666667", " 66.6666666666667"},
        // Halfway between two texts of fifteen digits: the even one.
        {1000000000000.125, "1000000000000.12", " 1000000000000.12"},
        {1000000000000.375, "1000000000000.38", " 1000000000000.38"},
        // Fifteen digits before the point are the last fixed ones, rounded up or not.
        {999999999999999, "999999999999999", " 999999999999999"},
        {999999999999999.4, "999999999999999", " 999999999999999"},
        {999999999999999.6, "1E+15", " 1E+15"},
        {-1234567890123456, "-1.23456789012346E+15", "-1.23456789012346E+15"},
        {1e100, "1E+100", " 1E+100"},
        {mostNegative, "-1.79769313486231E+308", "-1.79769313486231E+308"},
        // So are fifteen after it.
        {1e-15, "0.000000000000001", " .000000000000001"},
        {1e-16, "1E-16", " 1E-16"},
        {0.123456789012345, "0.123456789012345", " .123456789012345"},
        {0.0123456789012345, "1.23456789012345E-02", " 1.23456789012345E-02"},
        {-1.5e-16, "-1.5E-16", "-1.5E-16"},
        {std::numeric_limits<double>::min(), "2.2250738585072E-308", " 2.2250738585072E-308"},
        {std::numeric_limits<double>::denorm_min(), "4.94065645841247E-324", " 4.94065645841247E-324"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(numberText(c.value), c.number);
        EXPECT_EQ(str(c.value), c.str);
    }
    EXPECT_EQ(numberText(-1234.5, u","), "-1234,5");
    EXPECT_EQ(numberText(1.5e20, u"::"), "1::5E+20");
    for (const double value : {notANumber, infinity, -infinity}) {
        expectError([&] { str(value); }, 6, u"Overflow");
        expectError([&] { numberText(value); }, 6, u"Overflow");
    }
}

TEST(Numbers, BecomeCurrencyByHalvesToEven) {
    const struct {
        double value;
        std::int64_t tenThousandths;
        const char* str;
    } cases[] = {
        {0.123456, 1235, " .1235"},
        {-0.00004, 0, " 0"},
        {0.00005, 0, " 0"},
        {-0.00025, -2, "-.0002"},
        {-1e14, -1000000000000000000, "-100000000000000"},
        // The product as a double is a tie, though the product of these doubles itself is not.
        {0.00035, 4, " .0004"},
        {-0.00115, -12, "-.0012"},
        {0.00125, 12, " .0012"},
        // The last double below 2 to the power of 63 ten-thousandths.
        {922337203685477.5, 9223372036854774784, " 922337203685477"},
        {-922337203685477.5807, std::numeric_limits<std::int64_t>::min(), "-922337203685478"},
    };
    for (const auto& c : cases) {
        const Currency currency = Currency::fromDouble(c.value);
        EXPECT_EQ(currency.tenThousandths, c.tenThousandths) << c.value;
        EXPECT_EQ(str(currency), c.str) << c.value;
    }
    EXPECT_EQ(str(Currency{std::numeric_limits<std::int64_t>::max()}), " 922337203685478");
    EXPECT_EQ(str(Currency{1234567890123450}), " 123456789012.345");
    EXPECT_EQ(str(Currency{12345678901234565}), " 1234567890123.46");
    EXPECT_EQ(str(Currency{1234567890123445}), " 123456789012.344");
    EXPECT_EQ(str(Currency{1234567890123455}), " 123456789012.346");
    EXPECT_EQ(str(Currency{-9999999999999996}), "-1000000000000");
    for (const double value : {922337203685477.5808, -922337203685478.0, 1e15, infinity, notANumber}) {
        expectError([&] { Currency::fromDouble(value); }, 6, u"range of currency");
    }
}

TEST(Numbers, AreReadFromText) {
    const std::u16string zeros(400, u'0');
    const struct {
        std::u16string text;
        double expected;
    } cases[] = {
        {u"  17 ", 17},
        {u"-12.5", -12.5},
        {u"+1,234,567.25", 1234567.25},
        {u".5", 0.5},
        {u"5.", 5},
        {u"-2.5E-2", -0.025},
        {u"1E+15", 1e15},
        {u"1.7976931348623157E308", std::numeric_limits<double>::max()},
        {u"1e-400", 0},
        {u"0." + zeros + u"1", 0},
        {u"0e99999999999", 0},
        {u"1e-99999999999", 0},
        {u"1" + zeros + u"e-400", 1},
    };
    for (const auto& c : cases) EXPECT_EQ(toDouble(c.text), c.expected) << utf8(c.text);
    for (const Text text : {u"12,5", u"12.5"}) EXPECT_EQ(toDouble(text, u","), 12.5);
    EXPECT_EQ(toDouble(u"1,234:5", u":"), 1234.5);

    for (const Text text : {u"",     u" ",        u"-",      u".",        u"+.",  u"1 2",     u"- 1",
                            u"--1",  u"1.2.3",    u"1e",     u"1e+",      u"e5",  u"0x10",    u"1,5,x",
                            u",5",   u"1d3",      u"NaN",    u"inf",      u"\t1", u"1\u00A0", u"\u0661",
                            u"12,5", u"1234,567", u"1,2345", u"1,234,56", u"1,",  u"1.5,000", u"1,234e1,000"}) {
        expectError([&] { toDouble(text); }, 13, u"is not a number");
    }
    for (const Text text : {u"1.234,5", u"1,234,567", u"1,2.5"}) {
        expectError([&] { toDouble(text, u","); }, 13, u"is not a number");
    }
    for (const auto& text : {std::u16string(u"1e309"), u"-1" + zeros, u"1" + zeros + u"e-1", u"1" + zeros + u".5e-1",
                             std::u16string(u"1e99999999999")}) {
        expectError([&] { toDouble(text); }, 6, u"Overflow");
    }
}

TEST(Numbers, AreRoundedToTheWholeTypes) {
    EXPECT_EQ(toLong(u"12.5"), 12);
    EXPECT_EQ(toLong(u"13.5"), 14);
    EXPECT_EQ(toLong(u"-1.5"), -2);
    EXPECT_EQ(toLong(u"2147483647.49"), 2147483647);
    EXPECT_EQ(toLong(u"-2147483648.5"), std::numeric_limits<Long>::min());
    EXPECT_EQ(toInteger(u"32767.4"), 32767);
    EXPECT_EQ(toInteger(u"-32768.5"), -32768);
    for (const Text text : {u"2147483647.5", u"-2147483649", u"1e10"}) {
        expectError([&] { toLong(text); }, 6, u"Overflow");
    }
    for (const Text text : {u"32767.5", u"-32769"}) expectError([&] { toInteger(text); }, 6, u"Overflow");
    for (const double value : {notANumber, infinity, 2147483648.0}) {
        expectError([&] { roundToLong(value); }, 6, u"Overflow");
    }
}

}  // namespace
}  // namespace quill1xml
