#include "automation/manual/meanings.hpp"

#include "automation/manual/attribute_text.hpp"
#include "automation/manual/families.hpp"
#include "quill1xml/text.hpp"
#include "records/condition_text.hpp"
#include "records/words.hpp"

#include <algorithm>

namespace quill1xml::automation {
namespace {

struct Meaning {
    std::string_view name;
    std::string_view text;
};

constexpr Meaning meanings[] = {
#define MEANING(name, text) {name, text},
#include "automation/manual/meanings.def"
#undef MEANING
};

/// The declared meaning for the method, else for every method; empty where the name is to say it.
std::string_view declared(const Member& member, const Parameter& parameter) {
    const std::string family = patternOf(parameter.name);
    const std::string own = std::string(member.name) + '.';
    for (const std::string& name :
         {own + std::string(parameter.name), own + family, std::string(parameter.name), family}) {
        const auto found = std::ranges::find(meanings, std::string_view(name), &Meaning::name);
        if (found != std::end(meanings)) return found->text;
    }
    return {};
}

/// What the numbers say of a parameter that says yes or no by one; empty for others.
std::string_view answersOf(const Member& member, const Parameter& parameter) {
    const std::string_view prefix = parameter.name.substr(0, 6);
    const bool answers =
        parameter.type == ParameterType::integer && !parameter.required && (prefix == "intBln" || prefix == "intbln");
    if (!answers) return {};
    return defaultOf<Integer>(member, parameter) == -1 ? ": 1 yes, 0 no, -1 not sent" : ": 1 yes, 0 no";
}

std::string wordList(std::string_view parameter, records::Words words) {
    std::string list(parameter);
    std::string_view separator = ": ";
    for (const Text word : words) {
        list.append(separator).append(toUtf8(word));
        separator = ", ";
    }
    return list + ".";
}

}  // namespace

std::string meaningOf(const Member& member, const Parameter& parameter, bool ofFamily) {
    const std::string_view given = declared(member, parameter);
    std::string text = given.empty() ? wordsOf(parameter.name, !ofFamily) : std::string(given);
    const std::string_view answers = answersOf(member, parameter);
    if (!answers.empty()) return text.append(answers);
    const std::string limit = member.record == nullptr || member.parameters.data() != member.record->parameters.data()
                                  ? std::string()
                                  : limitText(*member.record, parameter);
    return limit.empty() ? text : text + "; " + limit;
}

std::string aboutMember(const Class& of, const Member& member) {
    const bool downloaded = findMember(of, std::string_view("Initialise")) != nullptr;
    const bool named = downloaded && member.kind == MemberKind::propertyGet && member.result != ResultType::collection;
    return (named ? sentence(wordsOf(member.name, true)) + " " : std::string()).append(member.summary);
}

std::string wordLists(const Member& member) {
    // It writes its record through AddOrder.
    if (member.name == "UpdateOrder") return wordList("strOrderStatus", records::orderStatuses);
    std::string lists;
    const bool ofRecord = member.record != nullptr && member.parameters.data() == member.record->parameters.data();
    for (const records::Row& row : ofRecord ? member.record->rows : std::span<const records::Row>()) {
        for (const records::ResolvedTest& each : row.conditions()) {
            if (each.test.kind != records::Test::Kind::oneOf) continue;
            if (!lists.empty()) lists += ' ';
            lists += wordList(records::parameterAt(member.parameters, each.field), each.test.words);
        }
    }
    return lists;
}

}  // namespace quill1xml::automation
