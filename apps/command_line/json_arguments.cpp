#include "command_line/json_arguments.hpp"

#include "automation/manual/job_template.hpp"
#include "command_line/nearest.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <cmath>
#include <string>
#include <vector>

namespace quill1xml::cli {
namespace {

using automation::Member;
using nlohmann::json;

[[noreturn]] void wrongType(const Parameter& parameter, std::string_view expected) {
    throw runtimeError(RuntimeError::typeMismatch,
                       toUtf16(std::string(parameter.name).append(" takes ").append(expected)));
}

std::u16string textOf(const json& value, const Parameter& parameter, std::string_view expected) {
    if (!value.is_string()) wrongType(parameter, expected);
    if (value == automation::placeholder) wrongType(parameter, "a value in the place of " + value.get<std::string>());
    return toUtf16(value.get_ref<const std::string&>());
}

std::int64_t wholeOf(const json& value, const Parameter& parameter) {
    if (value.is_number_integer() && !value.is_number_unsigned()) return value.get<std::int64_t>();
    if (!value.is_number()) wrongType(parameter, "a whole number");
    const double number = value.get<double>();
    if (number != std::floor(number)) wrongType(parameter, "a whole number");
    if (std::fabs(number) > 1e15) throw runtimeError(RuntimeError::overflow, toUtf16(parameter.name));
    return static_cast<std::int64_t>(number);
}

double numberOf(const json& value, const Parameter& parameter) {
    if (!value.is_number()) wrongType(parameter, "a number");
    return value.get<double>();
}

bool flagOf(const json& value, const Parameter& parameter) {
    if (!value.is_boolean()) wrongType(parameter, "true or false");
    return value.get<bool>();
}

Date dateOf(const json& value, const Parameter& parameter) {
    constexpr std::string_view expected = "a date as \"yyyy-MM-ddThh:mm:ss\"";
    try {
        return Date::fromText(textOf(value, parameter, expected));
    } catch (const Error&) {
        wrongType(parameter, expected);
    }
}

void set(automation::Arguments& arguments, std::size_t index, const Parameter& parameter, const json& value) {
    switch (parameter.type) {
        case ParameterType::text:
        case ParameterType::variantText: arguments.setText(index, textOf(value, parameter, "a string")); break;
        case ParameterType::integer:
        case ParameterType::longInteger: arguments.setWhole(index, wholeOf(value, parameter)); break;
        case ParameterType::variantInteger:
            // A Boolean in a variant is the integer -1 or 0.
            arguments.setWhole(index,
                               value.is_boolean() ? -static_cast<int>(value.get<bool>()) : wholeOf(value, parameter));
            break;
        case ParameterType::floating: arguments.setDouble(index, numberOf(value, parameter)); break;
        case ParameterType::currency:
            arguments.setCurrency(index, Currency::fromDouble(numberOf(value, parameter)));
            break;
        case ParameterType::boolean: arguments.setBoolean(index, flagOf(value, parameter)); break;
        case ParameterType::date: arguments.setDate(index, dateOf(value, parameter)); break;
        case ParameterType::node:
        case ParameterType::nodeList: wrongType(parameter, "elements of a document, which JSON cannot hold");
    }
}

[[noreturn]] void unknownParameter(const Member& member, const std::string& name) {
    std::vector<std::string_view> known;
    for (const Parameter& parameter : member.parameters) known.push_back(parameter.name);
    std::string detail = unknownName(name, known);
    if (known.empty()) detail.append(" (").append(member.name).append(" takes no arguments)");
    throw runtimeError(RuntimeError::namedArgumentNotFound, toUtf16(detail));
}

}  // namespace

void fillArguments(automation::Arguments& arguments, const Member& member, const json& values) {
    for (const auto& [name, value] : values.items()) {
        std::size_t index = 0;
        while (index < member.parameters.size() && member.parameters[index].name != name) ++index;
        if (index == member.parameters.size()) unknownParameter(member, name);
        if (!value.is_null()) set(arguments, index, member.parameters[index], value);
    }
    arguments.requireAll();
}

}  // namespace quill1xml::cli
