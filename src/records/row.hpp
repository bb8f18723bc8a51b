// Rows of a record: what is checked, and which attributes are written when.
//
//     key      ("MessageID",   "strMessageID",   length(1, 10), escaped, u"The MessageID may not be ..."),
//     attribute("MessageText", "strMessageText", notDefault,    escaped),
//     deleted
//
// Names of parameters are looked up at compile time; one that the method does not have does not compile, nor does a
// condition on a parameter of another type.
#pragma once

#include "records/condition.hpp"
#include "records/rendering.hpp"
#include "store/parameters.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <string_view>

namespace quill1xml::records {

/// The text before an attribute's value, such as ` Rate="`, laid out when compiling.
class Opening {
public:
    static constexpr std::size_t longest = 46;

    constexpr Opening() = default;

    /// Of a name in which "#" stands for a number.
    constexpr Opening(std::string_view name, int number, bool blankBeforeEquals) {
        push(' ');
        for (const char c : name) {
            if (c != '#') {
                push(c);
                continue;
            }
            if (number >= 10) push(static_cast<char>('0' + number / 10));
            push(static_cast<char>('0' + number % 10));
        }
        nameSize_ = static_cast<std::uint8_t>(size_ - 1);
        if (blankBeforeEquals) push(' ');
        push('=');
        push('"');
    }

    /// Writes the opening and returns its end. Requires room for the longest one: all of it is copied, in one block.
    char16_t* write(char16_t* to) const {
        std::memcpy(to, characters_.data(), sizeof characters_);
        return to + size_;
    }

    constexpr std::u16string_view name() const { return {characters_.data() + 1, nameSize_}; }

private:
    constexpr void push(char c) { characters_.at(size_++) = static_cast<char16_t>(c); }

    std::array<char16_t, longest> characters_{};
    std::uint8_t size_ = 0;
    std::uint8_t nameSize_ = 0;
};

/// How a row relates to what stands around it.
enum class RowKind : std::uint8_t {
    attribute,  ///< written when its condition holds
    otherwise,  ///< written when its condition holds and the row before it was not written
    key,        ///< fails when its condition does not hold, and is always written
    check,      ///< fails when its condition does not hold, and writes nothing
};

/// A row as declared: parameters by name, "#" for a number in numbered families.
struct RowDeclaration {
    RowKind kind = RowKind::attribute;
    std::string_view name{};
    std::string_view parameter{};
    Condition condition{};
    const Rendering* rendering = nullptr;
    std::u16string_view fixed{};    ///< the value of an attribute without rendering
    std::u16string_view message{};  ///< of a failed check; "{name}" stands for a parameter's value
    std::u16string_view source{};   ///< of a failed check, where it is not the record's
    bool blankBeforeEquals = false;
    int number = 0;  ///< what "#" stands for
};

/// A test with its parameter found.
struct ResolvedTest {
    Test test{};
    Field field{};
    Field other{};  ///< what it is compared with, where it is
};

/// A row ready to be worked off.
struct Row {
    RowKind kind = RowKind::attribute;
    bool any = false;
    std::uint8_t testCount = 0;
    Field field{};
    const ResolvedTest* tests = nullptr;
    const Rendering* rendering = nullptr;
    Opening opening{};
    std::u16string_view fixed{};
    std::u16string_view message{};
    std::u16string_view source{};

    constexpr bool writes() const { return kind != RowKind::check; }
    constexpr bool isChecked() const { return kind == RowKind::key || kind == RowKind::check; }
    constexpr std::u16string_view name() const { return opening.name(); }
    constexpr std::span<const ResolvedTest> conditions() const { return {tests, testCount}; }
};

// ---- Declaring rows

constexpr RowDeclaration attribute(std::string_view name, std::string_view parameter, const Condition& condition,
                                   const Rendering& rendering) {
    return {.name = name, .parameter = parameter, .condition = condition, .rendering = &rendering};
}

/// A value that must meet its condition; the record is refused with the message otherwise.
constexpr RowDeclaration key(std::string_view name, std::string_view parameter, const Condition& condition,
                             const Rendering& rendering, std::u16string_view message, std::u16string_view source = {}) {
    return {.kind = RowKind::key,
            .name = name,
            .parameter = parameter,
            .condition = condition,
            .rendering = &rendering,
            .message = message,
            .source = source};
}

/// As key, without an attribute.
constexpr RowDeclaration check(std::string_view parameter, const Condition& condition, std::u16string_view message,
                               std::u16string_view source = {}) {
    return {
        .kind = RowKind::check, .parameter = parameter, .condition = condition, .message = message, .source = source};
}

/// An attribute with a value of its own.
constexpr RowDeclaration fixed(std::string_view name, const Condition& condition, std::u16string_view value) {
    return {.name = name, .condition = condition, .fixed = value};
}

/// The row, written only when the one before it was not.
constexpr RowDeclaration otherwise(RowDeclaration row) {
    row.kind = RowKind::otherwise;
    return row;
}

/// The row, with a blank between the attribute's name and the equals sign: the format has it so.
constexpr RowDeclaration blankBeforeEquals(RowDeclaration row) {
    row.blankBeforeEquals = true;
    return row;
}

/// The rows once per number from first to last, "#" in their names and parameters being the number.
template <int first, int last, class... Rows>
constexpr auto numbered(const Rows&... rowsOfOneNumber) {
    const std::array<RowDeclaration, sizeof...(Rows)> block{rowsOfOneNumber...};
    std::array<RowDeclaration, block.size() * static_cast<std::size_t>(last - first + 1)> all;
    std::size_t next = 0;
    for (int number = first; number <= last; ++number) {
        for (const RowDeclaration& row : block) {
            all[next] = row;
            all[next++].number = number;
        }
    }
    return all;
}

inline constexpr RowDeclaration deleted = attribute("Deleted", "blnDeleted", isTrue, flag);

namespace detail {

template <class Item>
inline constexpr std::size_t rowCount = 1;
template <std::size_t size>
inline constexpr std::size_t rowCount<std::array<RowDeclaration, size>> = size;

constexpr std::array<RowDeclaration, 1> asArray(const RowDeclaration& row) { return {row}; }
template <std::size_t size>
constexpr const std::array<RowDeclaration, size>& asArray(const std::array<RowDeclaration, size>& family) {
    return family;
}

/// Whether a pattern with "#" for the number spells a name.
constexpr bool spells(std::string_view pattern, int number, std::string_view name) {
    for (const char c : pattern) {
        if (c != '#') {
            if (!name.starts_with(c)) return false;
            name.remove_prefix(1);
            continue;
        }
        const char digits[] = {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
        const std::string_view text(digits + (number < 10 ? 1 : 0), number < 10 ? 1 : 2);
        if (!name.starts_with(text)) return false;
        name.remove_prefix(text.size());
    }
    return name.empty();
}

constexpr Field find(std::span<const Parameter> parameters, std::string_view pattern, int number) {
    if (pattern.empty()) return {};
    for (const Parameter& parameter : parameters) {
        if (spells(pattern, number, parameter.name)) return {parameter.type, parameter.offset, true};
    }
    throw "the method has no parameter of this name";
}

constexpr Row resolve(std::span<const Parameter> parameters, const RowDeclaration& declaration,
                      const ResolvedTest* tests) {
    Row row;
    row.kind = declaration.kind;
    row.any = declaration.condition.any;
    row.testCount = declaration.condition.count;
    row.field = find(parameters, declaration.parameter, declaration.number);
    row.tests = tests;
    row.rendering = declaration.rendering;
    row.opening = Opening(declaration.name, declaration.number, declaration.blankBeforeEquals);
    row.fixed = declaration.fixed;
    row.message = declaration.message;
    row.source = declaration.source;
    return row;
}

constexpr ResolvedTest resolve(std::span<const Parameter> parameters, const RowDeclaration& row,
                               const TestDeclaration& test) {
    const auto own = test.parameter.empty() ? row.parameter : test.parameter;
    if (own.empty()) throw "a condition needs a parameter";
    const Field field = find(parameters, own, row.number);
    const bool isText = field.type == ParameterType::text || field.type == ParameterType::variantText;
    if (isText != test.test.readsText()) throw "the condition does not suit the type of the parameter";
    return {test.test, field, find(parameters, test.other, row.number)};
}

/// The tests of all rows, one row's after another's: kept apart, as most rows have but one.
template <class Arguments, class Rows>
inline constexpr auto tests = [] {
    constexpr auto declarations = Rows{}();
    constexpr std::size_t count = [] {
        std::size_t sum = 0;
        for (const RowDeclaration& row : Rows{}()) sum += row.condition.count;
        return sum;
    }();
    std::array<ResolvedTest, count> resolved;
    std::size_t next = 0;
    for (const RowDeclaration& row : declarations) {
        for (const TestDeclaration& test : row.condition.span()) {
            resolved[next++] = resolve(parametersOf<Arguments>, row, test);
        }
    }
    return resolved;
}();

template <class Arguments, class Rows>
inline constexpr auto table = [] {
    constexpr auto declarations = Rows{}();
    std::array<Row, declarations.size()> resolved;
    std::size_t nextTest = 0;
    for (std::size_t i = 0; i < declarations.size(); ++i) {
        resolved[i] = resolve(parametersOf<Arguments>, declarations[i], tests<Arguments, Rows>.data() + nextTest);
        nextTest += declarations[i].condition.count;
    }
    return resolved;
}();

}  // namespace detail

/// The rows of a record, numbered families laid out.
template <class... Items>
constexpr auto rows(const Items&... items) {
    std::array<RowDeclaration, (detail::rowCount<Items> + ... + 0)> all{};
    auto next = all.begin();
    ((next = std::ranges::copy(detail::asArray(items), next).out), ...);
    return all;
}

}  // namespace quill1xml::records
