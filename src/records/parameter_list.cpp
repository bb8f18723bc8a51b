#include "records/parameter_list.hpp"

#include "quill1xml/text.hpp"
#include "store/required.hpp"
#include "text/numbers.hpp"
#include "text/xml_attribute.hpp"

#include <cstring>

namespace quill1xml {
namespace records {
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

template <class Value>
Value get(const void* values, const Parameter& parameter) {
    Value value{};
    std::memcpy(&value, static_cast<const unsigned char*>(values) + parameter.offset, sizeof value);
    return value;
}

/// As `read` reads it, whatever the separator there.
std::u16string textOf(const void* values, const Parameter& parameter) {
    std::u16string text;
    switch (parameter.type) {
        case ParameterType::integer: appendInteger(text, get<Integer>(values, parameter)); break;
        case ParameterType::longInteger: appendInteger(text, get<Long>(values, parameter)); break;
        case ParameterType::floating: appendNumberText(text, get<Double>(values, parameter), u"."); break;
        case ParameterType::date: text = get<Date>(values, parameter).toText(); break;
        default: text = get<Text>(values, parameter); break;
    }
    return text;
}

/// The element is named as the method that reads it, without its "Add".
std::u16string listText(std::string_view method, std::span<const Parameter> parameters, const void* values) {
    std::u16string list = u"<" + toUtf16(method.substr(3));
    for (const Parameter& parameter : parameters) {
        const std::u16string text = textOf(values, parameter);
        if (!parameter.required && text == notGiven) continue;
        appendXmlAttribute(list, toUtf16(parameter.name), text);
    }
    return list + u"/>";
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

}  // namespace records

#define LIST(Name, Method) \
    std::u16string Name::xml() const { return records::listText(#Method, parametersOf<Name>, this); }
#include "quill1xml/lists/all.def"

}  // namespace quill1xml
