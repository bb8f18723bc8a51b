// Values that a call gave and that its record goes without.

#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"
#include "records/condition_text.hpp"
#include "records/record.hpp"
#include "text/date.hpp"
#include "text/numbers.hpp"

#include <algorithm>

namespace quill1xml::records {
namespace {

constexpr std::size_t shownCharacters = 60;

bool isText(Field field) { return field.type == ParameterType::text || field.type == ParameterType::variantText; }

bool isGiven(const Record& record, const Call& call, Field field) {
    const Call defaults{call.store, record.defaults};
    if (!isText(field)) return call.number(field) != defaults.number(field);
    const Text text = call.text(field);
    return !text.empty() && text != notGiven && text != defaults.text(field);
}

/// Whether the value stands in the record by another row, or another value takes its place.
bool isWritten(const Record& record, const Row& row, const Call& call) {
    return std::ranges::any_of(record.rows, [&](const Row& other) {
        const bool same = other.field.present && other.field.offset == row.field.offset;
        return other.writes() && (same || other.name() == row.name()) && holds(other, call);
    });
}

std::string valueText(const Call& call, Field field) {
    if (isText(field)) return "\"" + toUtf8(call.text(field).substr(0, shownCharacters)) + "\"";
    std::u16string text;
    if (field.type == ParameterType::date) {
        appendDateText(text, call.date(field));
    } else {
        appendNumberText(text, call.number(field), u".");
    }
    return toUtf8(text);
}

std::string reasonOf(const Record& record, const Row& row, const Call& call) {
    for (const ResolvedTest& each : row.conditions()) {
        if (passes(each, call)) continue;
        const std::string needed =
            textOf(each.test) + (each.other.present ? std::string(parameterAt(record.parameters, each.other)) : "");
        const bool own = each.field.offset == row.field.offset;
        if (!own) return std::string(parameterAt(record.parameters, each.field)) + " is not " + needed;
        const bool counted = each.test.kind == Test::Kind::length;
        return (counted ? std::to_string(call.text(row.field).size()) + " characters" : valueText(call, row.field)) +
               "; must be " + needed;
    }
    return {};
}

}  // namespace

void tellLeftOut(const Record& record, const Call& call) {
    for (const Row& row : record.rows) {
        const bool optional = row.writes() && !row.isChecked() && row.field.present;
        if (!optional || holds(row, call) || !isGiven(record, call, row.field) || isWritten(record, row, call)) {
            continue;
        }
        const std::string attribute = toUtf8(row.name());
        const std::string_view parameter = parameterAt(record.parameters, row.field);
        const std::string reason = reasonOf(record, row, call);
        if (call.store.valueLeftOut) call.store.valueLeftOut({record.method, parameter, attribute, reason});
        if (!call.store.strict) continue;
        throw Error(applicationError, record.source(),
                    toUtf16(std::string(attribute).append(" (").append(parameter).append("): ").append(reason)));
    }
}

}  // namespace quill1xml::records
