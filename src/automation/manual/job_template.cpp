#include "automation/manual/job_template.hpp"

#include "automation/manual/notation.hpp"
#include "automation/manual/parameter_lists.hpp"
#include "quill1xml/text.hpp"

namespace quill1xml::automation {
namespace {

std::string valueText(const Member& method, const Parameter& parameter) {
    if (takesList(method)) return jsonText(toUtf8(parameterList(method.name, {})));
    return parameter.required ? jsonText(placeholder) : literal(Notation::job, parameter, method.defaults);
}

}  // namespace

std::string jobTemplate(const Member& method) {
    std::string text;
    for (const Parameter& parameter : method.parameters) {
        text += (text.empty() ? "\"" : ",\"") + std::string(parameter.name) + "\":" + valueText(method, parameter);
    }
    return "{\"" + std::string(method.name) + "\":{" + text + "}}";
}

}  // namespace quill1xml::automation
