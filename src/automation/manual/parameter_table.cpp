#include "automation/manual/parameter_table.hpp"

#include "automation/manual/families.hpp"
#include "automation/manual/markdown.hpp"
#include "automation/manual/meanings.hpp"
#include "automation/manual/notation.hpp"

#include <algorithm>
#include <vector>

namespace quill1xml::automation {
namespace {

std::string defaultText(const Member& member, const Parameter& parameter) {
    if (parameter.required) return "required";
    switch (parameter.type) {
        case ParameterType::date: return "the zero date";
        case ParameterType::boolean: return defaultOf<Boolean>(member, parameter) ? "True" : "False";
        case ParameterType::floating:
            if (defaultOf<Double>(member, parameter) == mostNegative) return "the most negative number";
            break;
        default: break;
    }
    return literal(Notation::script, parameter, member.defaults);
}

/// Places in the interface order, from 1: "3", "28 to 30, 37 to 53", "2, 4, … 30".
std::string places(const std::vector<std::size_t>& indices) {
    std::string text;
    const bool even = indices.size() > 3 && indices[1] - indices[0] == 2 && indices[2] - indices[1] == 2;
    if (even) {
        return std::to_string(indices[0] + 1) + ", " + std::to_string(indices[1] + 1) + ", … " +
               std::to_string(indices.back() + 1);
    }
    for (std::size_t i = 0; i < indices.size();) {
        std::size_t last = i;
        while (last + 1 < indices.size() && indices[last + 1] == indices[last] + 1) ++last;
        if (!text.empty()) text += ", ";
        text += std::to_string(indices[i] + 1);
        if (last > i) text += " to " + std::to_string(indices[last] + 1);
        i = last + 1;
    }
    return text;
}

}  // namespace

std::string parameterTable(const Member& member) {
    std::string out = "| No. | Parameter | Type | Default | Meaning |\n|---|---|---|---|---|\n";
    std::vector<bool> shown(member.parameters.size());
    for (std::size_t i = 0; i < member.parameters.size(); ++i) {
        if (shown[i]) continue;
        const Parameter& first = member.parameters[i];
        std::vector<std::size_t> family{i};
        for (std::size_t next = i + 1; next < member.parameters.size() && hasNumber(first.name); ++next) {
            const Parameter& other = member.parameters[next];
            if (patternOf(other.name) != patternOf(first.name) || other.type != first.type ||
                defaultText(member, other) != defaultText(member, first)) {
                continue;
            }
            family.push_back(next);
            shown[next] = true;
        }
        const Parameter& last = member.parameters[family.back()];
        const std::string type(typeNames[static_cast<std::size_t>(first.type)]);
        out += "| " + places(family) + " | " + code(first.name) + (family.size() > 1 ? " to " + code(last.name) : "") +
               " | " + type + " | " + cell(defaultText(member, first)) + " | " +
               cell(sentence(meaningOf(member, first, family.size() > 1))) + " |\n";
    }
    return out + "\n";
}

}  // namespace quill1xml::automation
