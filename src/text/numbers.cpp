#include "text/numbers.hpp"

#include "quill1xml/error.hpp"
#include "text/blanks.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace quill1xml {
namespace {

constexpr int significantDigits = 15;

/// The nearest whole number, halves to even.
double nearest(double value) {
    // Adding and taking away this much leaves no bit for a fraction.
    constexpr double shift = 0x1.8p52;
    return std::fabs(value) < 0x1p51 ? (value + shift) - shift : std::nearbyint(value);
}

/// A decimal number: 0.d1d2d3... times 10 to the power of `point`, so `point` digits stand before the decimal point.
struct Decimal {
    bool negative = false;
    std::array<char, 24> digits{};
    int count = 0;
    int point = 0;

    void stripTrailingZeros() {
        while (count > 1 && digits[static_cast<std::size_t>(count - 1)] == '0') --count;
    }
};

/// Takes apart "d.ddde+xx" as std::to_chars writes it.
void readScientific(Decimal& decimal, std::string_view text) {
    const std::size_t e = text.find('e');
    decimal.count = 0;
    for (const char c : text.substr(0, e)) {
        if (c != '.') decimal.digits[static_cast<std::size_t>(decimal.count++)] = c;
    }
    std::string_view exponentText = text.substr(e + 1);
    if (exponentText.front() == '+') exponentText.remove_prefix(1);
    int exponent = 0;
    std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
    decimal.point = exponent + 1;
}

Decimal toDecimal(Currency value);

/// The number as a currency amount when it is one to the last bit: most prices are, and their digits come cheap.
bool asAmount(double value, Currency& amount) {
    constexpr double limit = 1e15;
    const double scaled = nearest(value * 10000);
    if (!(std::fabs(scaled) < limit) || scaled / 10000 != value) return false;
    amount.tenThousandths = static_cast<std::int64_t>(scaled);
    return true;
}

Decimal toDecimal(double value) {
    if (Currency amount; asAmount(value, amount)) return toDecimal(amount);
    if (!std::isfinite(value)) throw runtimeError(RuntimeError::overflow, u"a number must be finite");
    Decimal decimal;
    decimal.negative = value < 0;
    const double magnitude = std::fabs(value);
    std::array<char, 32> text;
    auto end = std::to_chars(text.data(), text.data() + text.size(), magnitude, std::chars_format::scientific).ptr;
    readScientific(decimal, {text.data(), end});
    // The shortest text that names a denormal number has fewer digits than the number itself.
    const bool denormal = magnitude > 0 && magnitude < std::numeric_limits<double>::min();
    if (decimal.count > significantDigits || denormal) {
        end = std::to_chars(text.data(), text.data() + text.size(), magnitude, std::chars_format::scientific,
                            significantDigits - 1)
                  .ptr;
        readScientific(decimal, {text.data(), end});
    }
    decimal.stripTrailingZeros();
    return decimal;
}

/// Rounds to 15 significant digits, halves to even.
void roundDigits(Decimal& decimal) {
    if (decimal.count <= significantDigits) return;
    const auto digit = [&decimal](int i) -> char& { return decimal.digits[static_cast<std::size_t>(i)]; };
    bool rest = false;
    for (int i = significantDigits + 1; i < decimal.count; ++i) rest = rest || digit(i) != '0';
    const char next = digit(significantDigits);
    const bool odd = (digit(significantDigits - 1) - '0') % 2 != 0;
    decimal.count = significantDigits;
    if (next < '5' || (next == '5' && !rest && !odd)) return;
    int i = significantDigits - 1;
    while (i >= 0 && digit(i) == '9') digit(i--) = '0';
    if (i >= 0) {
        ++digit(i);
    } else {
        digit(0) = '1';
        ++decimal.point;
    }
}

Decimal toDecimal(Currency value) {
    Decimal decimal;
    decimal.negative = value.tenThousandths < 0;
    const auto bits = static_cast<std::uint64_t>(value.tenThousandths);
    const std::uint64_t magnitude = decimal.negative ? 0 - bits : bits;
    const char* end =
        std::to_chars(decimal.digits.data(), decimal.digits.data() + decimal.digits.size(), magnitude).ptr;
    decimal.count = static_cast<int>(end - decimal.digits.data());
    decimal.point = decimal.count - 4;
    if (magnitude == 0) decimal.point = 1;
    roundDigits(decimal);
    decimal.stripTrailingZeros();
    return decimal;
}

/// Writes the digits of a decimal in one of the two notations; `zero` tells whether "0" stands before a leading point.
char16_t* writeDigits(char16_t* to, const Decimal& decimal, Text separator, bool zero) {
    const auto digits = [&](int from, int end) {
        for (int i = from; i < end; ++i) {
            *to++ = i < decimal.count ? static_cast<char16_t>(decimal.digits[static_cast<std::size_t>(i)]) : u'0';
        }
    };
    const auto put = [&](Text text) { to = std::copy(text.begin(), text.end(), to); };
    const int after = decimal.count - decimal.point;
    if (decimal.point > significantDigits || after > significantDigits) {
        digits(0, 1);
        if (decimal.count > 1) {
            put(separator);
            digits(1, decimal.count);
        }
        const int exponent = decimal.point - 1;
        put(exponent < 0 ? u"E-" : u"E+");
        if (std::abs(exponent) < 10) *to++ = u'0';
        return writeInteger(to, std::abs(exponent));
    }
    if (decimal.point > 0) {
        digits(0, decimal.point);
    } else if (zero) {
        *to++ = u'0';
    }
    if (after <= 0) return to;
    put(separator);
    for (int i = decimal.point; i < 0; ++i) *to++ = u'0';
    digits(std::max(decimal.point, 0), decimal.count);
    return to;
}

char16_t* writeStr(char16_t* to, const Decimal& decimal) {
    *to++ = decimal.negative ? u'-' : u' ';
    return writeDigits(to, decimal, u".", false);
}

bool isDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

[[noreturn]] void notANumber(Text text) {
    throw runtimeError(RuntimeError::typeMismatch, u"\"" + std::u16string(text.substr(0, 50)) + u"\" is not a number");
}

/// Reads a number off the front of a text, and puts it into the form that std::from_chars reads.
class NumberReader {
public:
    NumberReader(Text text, Text decimalSeparator)
        : text_(text), rest_(trimBlanks(text)), separator_(decimalSeparator), grouping_(decimalSeparator != u",") {}

    std::string read() {
        if (rest_.starts_with(u'-')) plain_.push_back('-');
        if (rest_.starts_with(u'-') || rest_.starts_with(u'+')) rest_.remove_prefix(1);
        std::size_t digits = takeDigits();
        if (digits == 0) plain_.push_back('0');
        if (grouping_ && digits > 0 && digits <= 3) takeGroups();
        if (takeMark()) {
            plain_.push_back('.');
            digits += takeDigits();
            plain_.push_back('0');
        }
        if (digits == 0) notANumber(text_);
        takeExponent();
        if (!rest_.empty()) notANumber(text_);
        return std::move(plain_);
    }

private:
    std::size_t takeDigits(std::size_t most = Text::npos) {
        std::size_t count = 0;
        for (; count < most && !rest_.empty() && isDigit(rest_.front()); ++count) {
            plain_.push_back(static_cast<char>(rest_.front()));
            rest_.remove_prefix(1);
        }
        return count;
    }

    /// Each comma stands before exactly three digits.
    void takeGroups() {
        while (rest_.starts_with(u',')) {
            rest_.remove_prefix(1);
            if (takeDigits(3) != 3 || (!rest_.empty() && isDigit(rest_.front()))) notANumber(text_);
        }
    }

    /// A point is understood everywhere, as programs write it.
    bool takeMark() {
        const bool point = rest_.starts_with(u'.');
        if (!point && !rest_.starts_with(separator_)) return false;
        rest_.remove_prefix(point ? 1 : separator_.size());
        return true;
    }

    void takeExponent() {
        if (!rest_.starts_with(u'E') && !rest_.starts_with(u'e')) return;
        plain_.push_back('e');
        rest_.remove_prefix(1);
        if (rest_.starts_with(u'-')) plain_.push_back('-');
        if (rest_.starts_with(u'-') || rest_.starts_with(u'+')) rest_.remove_prefix(1);
        if (takeDigits() == 0) notANumber(text_);
    }

    Text text_;
    Text rest_;
    Text separator_;
    bool grouping_;
    std::string plain_;
};

/// What a number is that no double can hold: too small is zero, as for an automation host; too large is an overflow.
double beyondRange(std::string_view plain) {
    const std::size_t e = std::min(plain.find('e'), plain.size());
    const std::size_t point = std::min(plain.find('.'), e);
    const std::size_t first = plain.find_first_of("123456789");
    if (first >= e) return 0;
    std::string_view exponentText = plain.substr(std::min(e + 1, plain.size()));
    const bool negative = exponentText.starts_with('-');
    if (exponentText.starts_with('+')) exponentText.remove_prefix(1);
    int exponent = 0;
    const auto [end, error] = std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
    const bool huge = error == std::errc::result_out_of_range;
    const std::int64_t digitsBefore = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    if (huge ? negative : exponent + digitsBefore < 0) return 0;
    throw runtimeError(RuntimeError::overflow);
}

template <class Whole>
Whole roundTo(double value) {
    const double whole = nearest(value);
    if (!(whole >= static_cast<double>(std::numeric_limits<Whole>::min()) &&
          whole <= static_cast<double>(std::numeric_limits<Whole>::max()))) {
        throw runtimeError(RuntimeError::overflow);
    }
    return static_cast<Whole>(whole);
}

}  // namespace

char16_t* writeInteger(char16_t* to, std::int64_t value) {
    auto rest = static_cast<std::uint64_t>(value);
    if (value < 0) {
        *to++ = u'-';
        rest = 0 - rest;
    }
    int digits = 1;
    for (std::uint64_t limit = 10; digits < 19 && rest >= limit; limit *= 10) ++digits;
    for (char16_t* place = to + digits; place != to; rest /= 10) *--place = static_cast<char16_t>(u'0' + rest % 10);
    return to + digits;
}

char16_t* writeNumberText(char16_t* to, double value, Text decimalSeparator) {
    const Decimal decimal = toDecimal(value);
    if (decimal.negative) *to++ = u'-';
    return writeDigits(to, decimal, decimalSeparator, true);
}

char16_t* writeStrText(char16_t* to, double value) { return writeStr(to, toDecimal(value)); }

char16_t* writeStrText(char16_t* to, Currency value) {
    constexpr std::int64_t roundedFrom = 1'000'000'000'000'000;
    if (value.tenThousandths <= -roundedFrom || value.tenThousandths >= roundedFrom) {
        return writeStr(to, toDecimal(value));
    }
    // Up to 15 digits need no rounding.
    const auto magnitude = static_cast<std::uint64_t>(std::abs(value.tenThousandths));
    const std::uint64_t whole = magnitude / 10000;
    *to++ = value.tenThousandths < 0 ? u'-' : u' ';
    if (whole > 0 || magnitude == 0) to = writeInteger(to, static_cast<std::int64_t>(whole));
    const auto fraction = static_cast<unsigned>(magnitude % 10000);
    if (fraction == 0) return to;
    const auto digit = [](unsigned number) { return static_cast<char16_t>(u'0' + number % 10); };
    *to++ = u'.';
    to[0] = digit(fraction / 1000);
    to[1] = digit(fraction / 100);
    to[2] = digit(fraction / 10);
    to[3] = digit(fraction);
    for (to += 4; to[-1] == u'0';) --to;
    return to;
}

void appendInteger(std::u16string& out, std::int64_t value) {
    std::array<char16_t, longestNumber> characters;
    out.append(characters.data(), writeInteger(characters.data(), value));
}

void appendNumberText(std::u16string& out, double value, Text decimalSeparator) {
    std::array<char16_t, longestNumber> characters;
    out.append(characters.data(), writeNumberText(characters.data(), value, decimalSeparator));
}

double toDouble(Text text, Text decimalSeparator) {
    const std::string plain = NumberReader(text, decimalSeparator).read();
    double value = 0;
    const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    if (error == std::errc::result_out_of_range) return beyondRange(plain);
    if (end != plain.data() + plain.size()) notANumber(text);
    return value;
}

Long roundToLong(double value) { return roundTo<Long>(value); }
Integer roundToInteger(double value) { return roundTo<Integer>(value); }

Long toLong(Text text, Text decimalSeparator) { return roundToLong(toDouble(text, decimalSeparator)); }
Integer toInteger(Text text, Text decimalSeparator) { return roundToInteger(toDouble(text, decimalSeparator)); }

Currency Currency::fromDouble(double value) {
    // 2 to the power of 63 is exact as a double; everything below it fits.
    constexpr double limit = 9223372036854775808.0;
    const double scaled = nearest(value * 10000);
    if (!(scaled >= -limit && scaled < limit)) {
        throw runtimeError(RuntimeError::overflow, u"the amount is beyond the range of currency");
    }
    return {static_cast<std::int64_t>(scaled)};
}

}  // namespace quill1xml
