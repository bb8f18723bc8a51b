// Parameter lists of AddOrder and AddQuotation for tests: every attribute left out, but for those given.
#pragma once

#include "quill1xml/text.hpp"
#include "records/record.hpp"

#include <map>
#include <string>

namespace quill1xml::testing {

using Values = std::map<std::u16string, std::u16string>;

/// "(absent)" as a value leaves the attribute out of the list altogether.
inline std::u16string parameterList(const records::Record& record, const Values& given) {
    std::u16string text = u"<List";
    for (const Parameter& parameter : record.parameters) {
        const std::u16string name = toUtf16(parameter.name);
        const bool date = parameter.type == ParameterType::date;
        std::u16string value = parameter.type == ParameterType::text ? u"StringDefault"
                               : date                                ? u"1899-12-30T00:00:00"
                                                                     : u"-1";
        if (parameter.type == ParameterType::longInteger) value = u"1";
        if (!parameter.required) value = u"(absent)";
        if (const auto found = given.find(name); found != given.end()) value = found->second;
        if (value != u"(absent)") text.append(u" ").append(name).append(u"=\"").append(value).append(u"\"");
    }
    return text + u"/>";
}

inline std::u16string orderList(const Values& given) { return parameterList(records::AddOrder, given); }
inline std::u16string quotationList(const Values& given) { return parameterList(records::AddQuotation, given); }

}  // namespace quill1xml::testing
