// Rows worked off: tables of a record become straight code, without a decision at run time that the table has taken.
#pragma once

#include "quill1xml/error.hpp"
#include "records/row.hpp"
#include "text/blanks.hpp"

#include <algorithm>
#include <limits>
#include <utility>

namespace quill1xml::records {

struct Record;

/// Appends the attributes of a record: checks keys and writes what is to be written, in the order of the rows.
/// Throws the Error of the first check that fails, or of a value that cannot be rendered.
using AttributeWriter = void (*)(TextBuffer& out, const Record& record, const Call& call);

/// Throws the error of a row whose check failed.
[[noreturn]] void refuse(const Record& record, const Row& row, const Call& call);

/// Appends the attribute of a row. Not inline: what is repeated for every row should be short.
void writeAttribute(TextBuffer& out, const Row& row, const Call& call);

/// Whether a text ends in .gif, .jpg or .jpeg, whatever the case.
bool isImageName(Text name);

namespace detail {

template <Test::Kind kind, Type type>
bool passes(const Call& call, const ResolvedTest& resolved) {
    using Kind = Test::Kind;
    const Test& test = resolved.test;
    if constexpr (type == Type::text || type == Type::variantText) {
        const Text text = call.text(resolved.field);
        if constexpr (kind == Kind::notDefault) return text != notGiven;
        if constexpr (kind == Kind::length) return text.size() >= test.minimum && text.size() <= test.maximum;
        if constexpr (kind == Kind::oneOf) return std::ranges::find(test.words, text) != test.words.end();
        if constexpr (kind == Kind::notBlank) return !trimBlanks(text).empty();
        if constexpr (kind == Kind::imageName) return isImageName(text);
    } else {
        const double value = call.number<type>(resolved.field);
        if constexpr (kind == Kind::range) return value >= test.low && value <= test.high;
        if constexpr (kind == Kind::above) return value > test.low;
        if constexpr (kind == Kind::otherThan) return value != test.low;
        if constexpr (kind == Kind::notLowest) {
            return value != mostNegative && value != std::numeric_limits<double>::lowest();
        }
        if constexpr (kind == Kind::given || kind == Kind::isTrue) return value != 0;
        if constexpr (kind == Kind::isFalse) return value == 0;
        if constexpr (kind == Kind::notBefore) return value >= call.number<type>(resolved.other);
    }
}

template <class Arguments, class Rows>
struct RowWriter {
    static constexpr const auto& rows = table<Arguments, Rows>;

    template <std::size_t i, std::size_t test>
    static bool passesAt(const Call& call) {
        constexpr const ResolvedTest& resolved = rows[i].tests[test];
        return passes<resolved.test.kind, resolved.field.type>(call, resolved);
    }

    template <std::size_t i, std::size_t... test>
    static bool holds(const Call& call, std::index_sequence<test...>) {
        if constexpr (rows[i].any) return (passesAt<i, test>(call) || ...);
        return (passesAt<i, test>(call) && ...);
    }

    template <std::size_t i>
    static void workOff(TextBuffer& out, const Record& record, const Call& call, bool& written) {
        constexpr const Row& row = rows[i];
        const bool holding = holds<i>(call, std::make_index_sequence<rows[i].testCount>());
        if constexpr (row.kind == RowKind::key || row.kind == RowKind::check) {
            if (!holding) refuse(record, row, call);
            written = row.writes();
        } else {
            written = holding && !(row.kind == RowKind::otherwise && written);
        }
        if constexpr (row.writes()) {
            if (written) writeAttribute(out, row, call);
        }
    }

    template <std::size_t... i>
    static void workOffAll(TextBuffer& out, const Record& record, const Call& call, std::index_sequence<i...>) {
        bool written = false;
        (workOff<i>(out, record, call, written), ...);
    }

    static void writeAttributes(TextBuffer& out, const Record& record, const Call& call) {
        workOffAll(out, record, call, std::make_index_sequence<rows.size()>());
    }
};

}  // namespace detail
}  // namespace quill1xml::records
