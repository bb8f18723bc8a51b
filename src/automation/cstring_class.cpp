// The members of CString.

#include "automation/classes.hpp"
#include "automation/names.hpp"
#include "quill1xml/cstring.hpp"

namespace quill1xml::automation {
namespace {

CString& self(void* object) { return *static_cast<CString*>(object); }

constexpr Parameter concatParameters[] = {{"s", ParameterType::text, true, 0}};
constexpr auto concatParameterNames = tableOfNames(concatParameters);
constexpr Text noText;

constexpr Member members[] = {
    {.dispid = 1,
     .name = "concat",
     .summary = "Appends text. A character outside the code page is an overflow.",
     .parameters = concatParameters,
     .parameterNames = concatParameterNames,
     .defaults = &noText,
     .argumentsSize = sizeof(Text),
     .invoke = [](void* object, const void* arguments) -> Value {
         self(object).concat(*static_cast<const Text*>(arguments));
         return {};
     }},
    {.dispid = 2,
     .name = "length",
     .kind = MemberKind::propertyGet,
     .result = ResultType::longInteger,
     .summary = "The number of characters held.",
     .invoke = [](void* object, const void*) -> Value { return self(object).length(); }},
    {.dispid = 3,
     .name = "text",
     .kind = MemberKind::propertyGet,
     .result = ResultType::text,
     .summary = "The characters held.",
     .invoke = [](void* object, const void*) -> Value { return self(object).text(); }},
    {.dispid = 4,
     .name = "reset",
     .summary = "Empties the builder.",
     .invoke = [](void* object, const void*) -> Value {
         self(object).reset();
         return {};
     }},
};

constexpr auto memberNames = tableOfNames(members);

std::shared_ptr<void> create(const ports::Environment& environment) {
    return std::make_shared<CString>(environment.system->codePage());
}

}  // namespace

const Class& cstringClass() {
    static const Class cstring{.name = "CString",
                               .summary = "Builds a text of single-byte characters.",
                               .members = members,
                               .memberNames = memberNames,
                               .create = &create};
    return cstring;
}

}  // namespace quill1xml::automation
