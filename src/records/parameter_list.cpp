#include "records/parameter_list.hpp"

#include "quill1xml/text.hpp"
#include "store/required.hpp"
#include "text/numbers.hpp"

#include <cstring>

namespace quill1xml::records {
namespace {

std::shared_ptr<ports::Element> rootOf(const store::State& store, Text list) {
    ports::ParseError error;
    const auto document = store.environment.xml->parse({{list}}, nullptr, error);
    if (document == nullptr) throw Error(error.code, error.sourceText, error.reason);
    return document->root();
}

template <class Value>
void put(void* values, const Parameter& parameter, const Value& value) {
    std::memcpy(static_cast<unsigned char*>(values) + parameter.offset, &value, sizeof value);
}

void read(void* values, const Parameter& parameter, const std::u16string& text, Text separator) {
    switch (parameter.type) {
        case ParameterType::integer: put(values, parameter, toInteger(text, separator)); break;
        case ParameterType::longInteger: put(values, parameter, toLong(text, separator)); break;
        case ParameterType::floating: put(values, parameter, toDouble(text, separator)); break;
        case ParameterType::date: put(values, parameter, Date::fromText(text)); break;
        default: put(values, parameter, Text(text)); break;
    }
}

}  // namespace

void readParameterList(const store::State& store, Text list, std::span<const Parameter> parameters, void* values,
                       TextStore& texts) {
    const auto root = rootOf(store, list);
    for (const Parameter& parameter : parameters) {
        const std::u16string name = toUtf16(parameter.name);
        if (!parameter.required && !root->attribute(name)) continue;
        texts.push_back(store::requiredAttribute(*root, name));
        read(values, parameter, texts.back(), store.decimalSeparator);
    }
}

}  // namespace quill1xml::records
