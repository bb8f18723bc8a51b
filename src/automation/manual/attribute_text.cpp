#include "automation/manual/attribute_text.hpp"

#include "automation/manual/families.hpp"
#include "automation/manual/markdown.hpp"
#include "quill1xml/text.hpp"
#include "records/condition_text.hpp"

#include <algorithm>
#include <vector>

namespace quill1xml::automation {
namespace {

using records::Record;
using records::Row;
using records::RowKind;
using records::Test;

std::string parameterCell(const Record& record, records::Field field) {
    return field.present ? code(records::parameterAt(record.parameters, field)) : std::string();
}

bool isOwn(const Row& row, records::Field field) { return row.field.present && field.offset == row.field.offset; }

/// The cells of one attribute, and those of numbered ones that differ in nothing but the number.
struct AttributeLine {
    std::string name;
    std::string from;
    std::string condition;
    std::string rendering;
};

AttributeLine lineOf(const Record& record, const Row& row) {
    return {.name = toUtf8(row.name()),
            .from = std::string(records::parameterAt(record.parameters, row.field)),
            .condition = conditionText(record, row),
            .rendering =
                row.rendering != nullptr ? std::string(row.rendering->description) : "\"" + toUtf8(row.fixed) + "\""};
}

bool isNextOf(const AttributeLine& line, const AttributeLine& previous) {
    return line.rendering == previous.rendering && patternOf(line.name) == patternOf(previous.name) &&
           patternOf(line.from) == patternOf(previous.from) &&
           patternOf(line.condition) == patternOf(previous.condition);
}

std::string range(const std::string& first, const std::string& last) {
    if (first.empty()) return {};
    return first == last ? code(first) : code(first) + " to " + code(last);
}

/// Whether a test says more than that something is given.
bool limits(const Test& test) {
    switch (test.kind) {
        case Test::Kind::length:
        case Test::Kind::oneOf:
        case Test::Kind::range:
        case Test::Kind::above:
        case Test::Kind::imageName:
        case Test::Kind::notBefore: return true;
        default: return false;
    }
}

std::string_view limitWord(const Row& row, const Test& test) {
    if (row.isChecked()) return "must be ";
    const bool number = test.kind == Test::Kind::range || test.kind == Test::Kind::above;
    return number || test.minimum > 0 ? "sent when " : "";
}

std::string attributeTable(const Record& record) {
    std::vector<AttributeLine> lines;
    for (const Row& row : record.rows) {
        if (row.writes()) lines.push_back(lineOf(record, row));
    }
    std::string out = "| Attribute | From | Written when | As |\n|---|---|---|---|\n";
    std::vector<bool> shown(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (shown[i]) continue;
        std::size_t last = i;
        for (std::size_t next = i + 1; next < lines.size() && hasNumber(lines[i].name); ++next) {
            if (!isNextOf(lines[next], lines[last])) continue;
            last = next;
            shown[next] = true;
        }
        out += "| " + range(lines[i].name, lines[last].name) + " | " + range(lines[i].from, lines[last].from) + " | " +
               cell(lines[i].condition) + " | " + lines[i].rendering + " |\n";
    }
    return out + "\n";
}

}  // namespace

std::string conditionText(const Record& record, const Row& row) {
    std::string text;
    for (const auto& [test, field, other] : row.conditions()) {
        if (!text.empty()) text += row.any ? " or " : " and ";
        if (!isOwn(row, field)) text += parameterCell(record, field) + " is ";
        text += textOf(test) + parameterCell(record, other);
    }
    switch (row.kind) {
        case RowKind::key: return text.empty() ? "always" : "always; must be " + text;
        case RowKind::otherwise: return text.empty() ? "otherwise" : "otherwise, when " + text;
        default: return text.empty() ? "always" : text;
    }
}

std::string limitText(const Record& record, const Parameter& parameter) {
    std::string text;
    for (const Row& row : record.rows) {
        if (!row.field.present || row.field.offset != parameter.offset || row.any) continue;
        for (const auto& [test, field, other] : row.conditions()) {
            if (!limits(test) || !isOwn(row, field)) continue;
            const std::string limit = std::string(limitWord(row, test)) + textOf(test) + parameterCell(record, other);
            if (text.find(limit) == std::string::npos) text += (text.empty() ? "" : ", ") + limit;
        }
    }
    return text;
}

std::string recordSection(const Record& record) {
    std::string out = "Writes the element " + code(toUtf8(record.element));
    if (!record.shape.parent.empty()) out += " inside " + code(toUtf8(record.shape.parent));
    out += ".\n\n" + attributeTable(record);
    for (const Row& row : record.rows) {
        if (row.message.empty()) continue;
        const std::string source = toUtf8(row.source.empty() ? record.source() : std::u16string(row.source));
        out += "Refused with \"" + toUtf8(row.message) + "\" (source " + source + ").\n\n";
    }
    return out;
}

}  // namespace quill1xml::automation
