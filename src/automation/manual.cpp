#include "automation/manual.hpp"

#include "automation/classes.hpp"
#include "quill1xml/limits.hpp"
#include "quill1xml/text.hpp"
#include "quill1xml/version.hpp"
#include "records/condition_text.hpp"
#include "records/record.hpp"
#include "text/date.hpp"
#include "text/numbers.hpp"

#include <limits>

namespace quill1xml::automation {
namespace {

using records::Record;
using records::Row;
using records::RowKind;

constexpr std::string_view introduction = R"(# Quill1XML reference

One `Store` object serves one publishing job. Its packet numbers go on after `Send`: a second job on the same object
would start at a number that `Send` does not look for, and its cleanup would delete those packets unsent. Create a new
`Store` for every job.

A job runs so: `SetTempFilePath`, `SetPacketSize`, `Create`, `AddAdditionalParameters`, `AddEnvelope`, then the records
in any order, then `Send`. `Send` posts the kinds it knows; quotations and product images are not among them, and its
cleanup deletes their files: post them first with `SendTempFile`.

Every failure is written to the event log and raised with a number, a source and a description. A value that does not
meet the condition of its attribute leaves the attribute out without an error; only the refusals listed raise one.

Number text is the general form with the separator of the user's settings (12.5). Str text always has a point, a blank
or a minus sign in front and no zero before the point (" .5"). Date text is yyyy-MM-ddThh:mm:ss. Escaped text has &,
quotes, < and > as references. Lengths count UTF-16 units. A text parameter counts as given unless it is exactly
"StringDefault". For automation an optional argument that is passed as Empty counts as left out.

Members marked *Extension* go beyond the interface of Quill1XML 1: they are there for those who want them, and change
nothing for others.

What is special on Windows (versions, services, scanners, paths, code pages, the event log, errors and their remedies)
stands in the chapter [docs/on-windows.md](docs/on-windows.md) of the sources.

)";

std::string code(std::string_view text) { return std::string("`").append(text).append("`"); }

std::string numberText(double value) {
    std::u16string text;
    appendNumberText(text, value, u".");
    return toUtf8(text);
}

/// Cells of a Markdown table must not hold a bar.
std::string cell(std::string text) {
    for (std::size_t i = 0; (i = text.find('|', i)) != std::string::npos; i += 2) text.insert(i, 1, '\\');
    return text;
}

std::string defaultText(const Member& member, const Parameter& parameter) {
    if (parameter.required) return "required";
    switch (parameter.type) {
        case ParameterType::text:
        case ParameterType::variantText: return "\"" + toUtf8(defaultOf<Text>(member, parameter)) + "\"";
        case ParameterType::integer:
        case ParameterType::variantInteger: return std::to_string(defaultOf<Integer>(member, parameter));
        case ParameterType::longInteger: return std::to_string(defaultOf<Long>(member, parameter));
        case ParameterType::floating: return numberText(defaultOf<Double>(member, parameter));
        case ParameterType::boolean: return defaultOf<Boolean>(member, parameter) ? "True" : "False";
        case ParameterType::date: return "the zero date";
        case ParameterType::currency: return "0";
        case ParameterType::node:
        case ParameterType::nodeList: break;
    }
    return {};
}

std::string parameterCell(std::span<const Parameter> parameters, records::Field field) {
    return field.present ? code(records::parameterAt(parameters, field)) : std::string();
}

std::string conditionText(const Record& record, const Row& row) {
    std::string text;
    for (const auto& [test, field, other] : row.conditions()) {
        if (!text.empty()) text += row.any ? " or " : " and ";
        const bool own = row.field.present && field.offset == row.field.offset;
        if (!own) text += parameterCell(record.parameters, field) + " is ";
        text += textOf(test) + parameterCell(record.parameters, other);
    }
    switch (row.kind) {
        case RowKind::key: return "always; must be " + text;
        case RowKind::otherwise: return text.empty() ? "otherwise" : "otherwise, when " + text;
        default: return text.empty() ? "always" : text;
    }
}

void appendRecord(std::string& out, const Record& record) {
    out += "Writes the element " + code(toUtf8(record.element));
    if (!record.shape.parent.empty()) out += " inside " + code(toUtf8(record.shape.parent));
    out += ".\n\n| Attribute | From | Written when | As |\n|---|---|---|---|\n";
    for (const Row& row : record.rows) {
        if (!row.writes()) continue;
        const std::string rendering =
            row.rendering != nullptr ? std::string(row.rendering->description) : "\"" + toUtf8(row.fixed) + "\"";
        out += "| " + code(toUtf8(row.name())) + " | " + parameterCell(record.parameters, row.field) + " | " +
               cell(conditionText(record, row)) + " | " + rendering + " |\n";
    }
    out += "\n";
    for (const Row& row : record.rows) {
        if (row.message.empty()) continue;
        const std::string source = toUtf8(row.source.empty() ? record.source() : std::u16string(row.source));
        out += "Refused with \"" + toUtf8(row.message) + "\" (source " + source + ").\n\n";
    }
}

std::string_view resultName(ResultType result) {
    switch (result) {
        case ResultType::nothing: return "";
        case ResultType::longInteger: return "Long";
        case ResultType::integer: return "Integer";
        case ResultType::floating: return "Double";
        case ResultType::date: return "Date";
        case ResultType::collection: return "a collection";
        case ResultType::received: return "a collection, a document or Text";
        case ResultType::text: return "Text";
        case ResultType::bytes: return "Bytes";
        case ResultType::variant:
        case ResultType::enumerator: break;
    }
    return "";
}

void appendMember(std::string& out, const Member& member) {
    out += "### " + std::string(member.name) + "\n\n";
    if (member.dispid >= firstExtension) out += "*Extension.* ";
    out += std::string(member.summary) + "\n\n";
    if (member.result != ResultType::nothing) {
        out += (member.kind == MemberKind::propertyGet ? "Read-only property: " : "Returns: ") +
               std::string(resultName(member.result)) + ".\n\n";
    }
    if (!member.parameters.empty()) {
        out += "| Parameter | Type | Default |\n|---|---|---|\n";
        for (const Parameter& parameter : member.parameters) {
            out += "| " + code(parameter.name) + " | " +
                   std::string(typeNames[static_cast<std::size_t>(parameter.type)]) + " | " +
                   cell(defaultText(member, parameter)) + " |\n";
        }
        out += "\n";
    }
    if (member.record != nullptr) appendRecord(out, *member.record);
}

void appendEvent(std::string& out, const Event& event) {
    out += "### Event " + std::string(event.name) + "\n\n" + std::string(event.summary) + "\n\n";
    for (const Parameter& parameter : event.parameters) {
        out += "- " + code(parameter.name) + ": " + std::string(typeNames[static_cast<std::size_t>(parameter.type)]) +
               "\n";
    }
    out += "\n";
}

}  // namespace

std::string limitsText() {
    using std::to_string;
    return "On Linux an exchange with a server fails after " + to_string(limits::silence.count()) +
           " s without a byte or " + to_string(limits::replyMiB) +
           " MiB of replies,\nwhere the host sets no others, and after " + to_string(limits::headersMiB) +
           " MiB of headers or " + to_string(limits::redirects) + " redirects. A document with\nmore than " +
           to_string(limits::attributes) + " attributes in one tag does not load.";
}

std::string manual() {
    std::string out(introduction);
    out.insert(out.find('\n'), "\n\nVersion " + std::string(version()) + ".");
    out += limitsText() + "\n\n";
    for (const Class* each : classes()) {
        out += "## " + std::string(each->name) + "\n\n" + std::string(each->summary) + "\n\n";
        for (const Event& event : each->events) appendEvent(out, event);
        for (const Member& member : each->members) appendMember(out, member);
    }
    return out;
}

}  // namespace quill1xml::automation
