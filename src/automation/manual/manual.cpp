#include "automation/manual/manual.hpp"

#include "automation/classes.hpp"
#include "automation/manual/attribute_text.hpp"
#include "automation/manual/examples.hpp"
#include "automation/manual/families.hpp"
#include "automation/manual/limits.hpp"
#include "automation/manual/markdown.hpp"
#include "automation/manual/meanings.hpp"
#include "automation/manual/notation.hpp"
#include "automation/manual/parameter_lists.hpp"
#include "automation/manual/parameter_table.hpp"
#include "automation/manual/played.hpp"
#include "automation/manual/subjects.hpp"
#include "quill1xml/version.hpp"
#include "text/letter_case.hpp"

#include <stdexcept>

namespace quill1xml::automation {
namespace {

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

| Type | VBA, VB6, VBScript | Job line | C++ |
|---|---|---|---|
| Text, VariantText | String | string | `u"text"` |
| Integer, VariantInteger | Integer, 16 bits | whole number | `std::int16_t` |
| Long | Long, 32 bits | whole number | `std::int32_t` |
| Double | Double | number | `double` |
| Currency | Currency, 4 decimals | number | `Currency::fromDouble` |
| Boolean | Boolean | `true`, `false` | `bool` |
| Date | Date | `"yyyy-MM-ddThh:mm:ss"` | `Date::of` |

The zero date is 30 December 1899; it stands for no date. The column No. counts the parameters, for hosts that pass
them by their place.

Below each method stand an example call, and what the program writes when it is played: with the clock at half past two
on 1 June 2024, and with the calls around it that the text names.

Members marked *Extension* go beyond the interface of Quill1XML 1: they are there for those who want them, and change
nothing for others.

)";

constexpr std::string_view onWindows =
    "What is special on Windows (versions, services, scanners, paths, code pages, the event log, errors and their "
    "remedies)\nstands in the chapter [docs/on-windows.md](docs/on-windows.md).\n\n";

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

std::string listed(std::span<const std::string_view> names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0) text += i + 1 == names.size() ? " and " : ", ";
        text += code(names[i]);
    }
    return text;
}

std::string surroundingsText(const Member& member) {
    const auto [before, after] = surroundingsOf(member);
    if (before.empty() && after.empty()) return "The example";
    std::string text = "The example";
    if (!before.empty()) text += " after " + listed(before);
    if (!after.empty()) text += (before.empty() ? " before " : " and before ") + listed(after);
    return text;
}

std::string exampleSection(const Member& member) {
    const void* const arguments = exampleArguments(member);
    if (arguments == nullptr) throw std::logic_error("no example of " + std::string(member.name));
    std::string out;
    const struct {
        Notation notation;
        std::string_view language;
    } shown[] = {{Notation::job, "json"}, {Notation::script, "vbscript"}, {Notation::cpp, "cpp"}};
    for (const auto& [notation, language] : shown) {
        const std::string text = callText(notation, member, arguments);
        if (!text.empty()) out += fenced(language, text);
    }
    const Outcome outcome = played(member);
    if (!outcome.written.empty()) out += surroundingsText(member) + " writes:\n\n" + fenced("xml", outcome.written);
    if (!outcome.result.empty()) out += surroundingsText(member) + " returns:\n\n" + fenced("text", outcome.result);
    return out;
}

std::string methodEntry(const Member& member, bool ofStore) {
    std::string out = "### " + std::string(member.name) + "\n\n";
    if (member.dispid >= firstExtension) out += "*Extension.* ";
    out += std::string(member.summary) + "\n\n";
    if (member.result != ResultType::nothing) {
        out += (member.kind == MemberKind::propertyGet ? "Read-only property: " : "Returns: ") +
               std::string(resultName(member.result)) + ".\n\n";
    }
    if (!member.parameters.empty()) out += parameterTable(member);
    if (ofStore) out += exampleSection(member);
    if (takesList(member)) out += listSection(member);
    if (member.record != nullptr) out += recordSection(*member.record);
    if (ofStore && member.name == "UpdateOrder") out += updateSection();
    return out;
}

std::string eventEntry(const Event& event) {
    std::string out = "### Event " + std::string(event.name) + "\n\n" + std::string(event.summary) + "\n\n";
    for (const Parameter& parameter : event.parameters) {
        out += "- " + code(parameter.name) + ": " + std::string(typeNames[static_cast<std::size_t>(parameter.type)]) +
               "\n";
    }
    return out + "\n";
}

/// The properties of a downloaded object.
std::string propertyTable(const Class& of) {
    std::string out;
    for (const Member& member : of.members) {
        if (member.kind != MemberKind::propertyGet) continue;
        if (out.empty()) out = "| Property | Type | Meaning |\n|---|---|---|\n";
        out += "| " + code(member.name) + " | " + std::string(resultName(member.result)) + " | " +
               cell(aboutMember(of, member)) + " |\n";
    }
    return out.empty() ? out : out + "\n";
}

std::string classEntry(const Class& of) {
    std::string out = "## " + std::string(of.name) + "\n\n" + std::string(of.summary) + "\n\n";
    const bool isStore = of.name == storeClass().name;
    for (const Event& event : of.events) out += eventEntry(event);
    if (!isStore) out += propertyTable(of);
    for (const Member& member : of.members) {
        if (member.kind == MemberKind::method) out += methodEntry(member, isStore);
    }
    return out;
}

}  // namespace

std::string manual() {
    std::string out(introduction);
    out.insert(out.find('\n'), "\n\nVersion " + std::string(version()) + ".");
    out.append(subjectTable()).append(onWindows).append(limitsText()).append("\n\n");
    for (const Class* each : classes()) out += classEntry(*each);
    return out;
}

std::optional<std::string> manualEntry(std::string_view name) {
    if (const Member* const method = findMember(storeClass(), name)) return methodEntry(*method, true);
    for (const Class* each : classes()) {
        if (equalIgnoringCase(each->name, name)) return classEntry(*each);
        for (const Event& event : each->events) {
            if (equalIgnoringCase(event.name, name)) return eventEntry(event);
        }
    }
    return std::nullopt;
}

std::vector<std::string_view> manualNames() {
    std::vector<std::string_view> names;
    for (const Member& member : storeClass().members) names.push_back(member.name);
    for (const Class* each : classes()) {
        names.push_back(each->name);
        for (const Event& event : each->events) names.push_back(event.name);
    }
    return names;
}

}  // namespace quill1xml::automation
