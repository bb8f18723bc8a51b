// When an attribute is written: small tests on a parameter, composed with && and ||.
#pragma once

#include "quill1xml/types.hpp"

#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

namespace quill1xml::records {

/// Words of an enumeration, compared exactly.
using Words = std::span<const std::u16string_view>;

/// One test of one parameter.
struct Test {
    enum class Kind : std::uint8_t {
        notDefault,  ///< the text is not "StringDefault"
        length,      ///< the text has minimum to maximum characters
        oneOf,       ///< the text is one of the words
        notBlank,    ///< the trimmed text is not empty
        imageName,   ///< the text ends in .gif, .jpg or .jpeg, whatever the case
        range,       ///< the number lies from low to high
        above,       ///< the number is above low
        otherThan,   ///< the number is not low
        notLowest,   ///< the number is not the most negative double
        given,       ///< the date is not zero
        isTrue,      ///< the flag is set
        isFalse,     ///< the flag is not set
        notBefore,   ///< the date is not before that of the other parameter
    };

    /// Whether it is a test of texts, not of numbers, dates and flags.
    constexpr bool readsText() const { return kind <= Kind::imageName; }

    Kind kind{};
    std::uint32_t minimum = 0;
    std::uint32_t maximum = 0;
    double low = 0;
    double high = 0;
    Words words{};
};

/// A test as declared, with its parameters by name.
struct TestDeclaration {
    Test test{};
    std::string_view parameter{};  ///< whose value; empty for the attribute's own
    std::string_view other{};      ///< what it is compared with, where it is
};

/// A few tests that must all pass, or of which one must pass.
struct Condition {
    static constexpr std::size_t capacity = 3;

    std::array<TestDeclaration, capacity> tests{};
    std::uint8_t count = 0;
    bool any = false;  ///< one passing test is enough

    constexpr std::span<const TestDeclaration> span() const { return {tests.data(), count}; }
};

constexpr Condition conditionOf(const Test& test) {
    Condition condition;
    condition.tests[0].test = test;
    condition.count = 1;
    return condition;
}

constexpr Condition join(Condition left, const Condition& right, bool any) {
    if ((left.count > 1 && left.any != any) || (right.count > 1 && right.any != any)) {
        throw "&& and || do not mix in one condition";
    }
    for (const TestDeclaration& test : right.span()) left.tests.at(left.count++) = test;
    left.any = any;
    return left;
}

constexpr Condition operator&&(const Condition& left, const Condition& right) { return join(left, right, false); }
constexpr Condition operator||(const Condition& left, const Condition& right) { return join(left, right, true); }

/// The condition, tested on another parameter than the attribute's own.
constexpr Condition when(std::string_view parameter, Condition condition) {
    for (std::size_t i = 0; i < condition.count; ++i) condition.tests[i].parameter = parameter;
    return condition;
}

inline constexpr Condition always{};
inline constexpr Condition notDefault = conditionOf({.kind = Test::Kind::notDefault});
inline constexpr Condition notBlank = conditionOf({.kind = Test::Kind::notBlank});
inline constexpr Condition imageName = conditionOf({.kind = Test::Kind::imageName});
inline constexpr Condition notLowest = conditionOf({.kind = Test::Kind::notLowest});
inline constexpr Condition dateGiven = conditionOf({.kind = Test::Kind::given});
inline constexpr Condition isTrue = conditionOf({.kind = Test::Kind::isTrue});
inline constexpr Condition isFalse = conditionOf({.kind = Test::Kind::isFalse});

/// At least minimum and at most maximum characters.
constexpr Condition length(std::uint32_t minimum, std::uint32_t maximum) {
    return conditionOf({.kind = Test::Kind::length, .minimum = minimum, .maximum = maximum});
}
constexpr Condition atMost(std::uint32_t characters) { return length(0, characters); }

/// At least one character.
inline constexpr Condition notEmpty = length(1, std::numeric_limits<std::uint32_t>::max());

constexpr Condition between(double low, double high) {
    return conditionOf({.kind = Test::Kind::range, .low = low, .high = high});
}
constexpr Condition atLeast(double low) { return between(low, std::numeric_limits<double>::infinity()); }
constexpr Condition above(double low) { return conditionOf({.kind = Test::Kind::above, .low = low}); }
constexpr Condition otherThan(double value) { return conditionOf({.kind = Test::Kind::otherThan, .low = value}); }

/// A three-state integer that says no or yes.
inline constexpr Condition noOrYes = between(0, 1);

constexpr Condition notBefore(std::string_view other) {
    Condition condition = conditionOf({.kind = Test::Kind::notBefore});
    condition.tests[0].other = other;
    return condition;
}

/// One of the words, which the caller keeps.
constexpr Condition oneOf(Words words) { return conditionOf({.kind = Test::Kind::oneOf, .words = words}); }

}  // namespace quill1xml::records
