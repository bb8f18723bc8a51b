#include "command_line/check_report.hpp"

#include "command_line/error_text.hpp"
#include "command_line/text_table.hpp"
#include "quill1xml/text.hpp"
#include "text/numbers.hpp"

#include <nlohmann/json.hpp>

#include <utility>

namespace quill1xml::cli {
namespace {

using nlohmann::ordered_json;

std::string_view nameOf(Problem::Severity severity) {
    return severity == Problem::Severity::error ? "error" : "warning";
}

/// A text that is no UTF-16 of ours is still written.
std::string dump(const ordered_json& value) {
    return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

template <class Number>
std::u16string numberText(Number number) {
    std::u16string text;
    appendInteger(text, static_cast<std::int64_t>(number));
    return text;
}

ordered_json objectOf(const KindTotal& total) {
    return {
        {"kind", toUtf8(total.kind)}, {"records", total.records}, {"packets", total.packets}, {"bytes", total.bytes}};
}

std::string tableOf(const std::vector<KindTotal>& kinds, std::size_t width) {
    std::vector<TableRow> rows;
    rows.reserve(kinds.size());
    for (const KindTotal& total : kinds) {
        rows.push_back({total.kind, numberText(total.records), numberText(total.packets), numberText(total.bytes)});
    }
    return layOut(
        {{u"Kind", Cells::text}, {u"Records", Cells::number}, {u"Packets", Cells::number}, {u"Bytes", Cells::number}},
        rows, width);
}

std::string counted(std::size_t count, std::string_view thing) {
    return std::to_string(count).append(" ").append(thing).append(count == 1 ? "" : "s");
}

}  // namespace

void CheckReport::add(Finding finding) {
    if (options_.strict) finding.problem.severity = Problem::Severity::error;
    if (options_.json) {
        addJson(finding);
    } else {
        addText(finding);
    }
    ++(finding.problem.severity == Problem::Severity::error ? errors_ : warnings_);
}

void CheckReport::addText(const Finding& finding) {
    const Problem& problem = finding.problem;
    if (finding.line != 0) out_ << "line " << finding.line << ": ";
    out_ << nameOf(problem.severity) << ": ";
    if (!finding.method.empty()) out_ << indented(toUtf16(finding.method)) << ": ";
    if (finding.leftOutParameter.empty()) {
        out_ << indented(describe(problem));
    } else {
        out_ << finding.leftOutParameter << " is left out: " << toUtf8(problem.attribute) << ": "
             << indented(problem.reason);
    }
    out_ << '\n';
}

void CheckReport::addJson(const Finding& finding) {
    const Problem& problem = finding.problem;
    ordered_json object{{"severity", nameOf(problem.severity)}};
    const auto add = [&object](const char* name, const std::string& text) {
        if (!text.empty()) object[name] = text;
    };
    if (finding.line != 0) object["line"] = finding.line;
    add("method", std::string(finding.method));
    add("parameter", std::string(finding.leftOutParameter));
    add("packet", toUtf8(problem.packet));
    if (problem.record != 0) object["record"] = problem.record;
    add("element", toUtf8(problem.element));
    for (const auto& [name, value] : problem.key) object["key"][toUtf8(name)] = toUtf8(value);
    add("attribute", toUtf8(problem.attribute));
    // An empty value is one too.
    if (!problem.attribute.empty() && finding.leftOutParameter.empty()) object["value"] = toUtf8(problem.value);
    object["code"] = finding.code;
    object["reason"] = toUtf8(problem.reason);
    out_ << (errors_ + warnings_ == 0 ? "{\"findings\":[\n" : ",\n") << dump(object);
}

void CheckReport::finish(const std::vector<KindTotal>& kinds) {
    if (options_.json) {
        out_ << (errors_ + warnings_ == 0 ? "{\"findings\":[" : "\n") << "],\"kinds\":[";
        for (std::size_t i = 0; i < kinds.size(); ++i) out_ << (i == 0 ? "\n" : ",\n") << dump(objectOf(kinds[i]));
        out_ << (kinds.empty() ? "]}\n" : "\n]}\n");
    } else {
        if (!kinds.empty()) out_ << tableOf(kinds, options_.width);
        out_ << counted(errors_, "error") << ", " << counted(warnings_, "warning") << '\n';
    }
    out_.flush();
}

}  // namespace quill1xml::cli
