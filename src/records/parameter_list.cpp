#include "records/parameter_list.hpp"

#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"
#include "store/required.hpp"
#include "text/numbers.hpp"
#include "text/xml_attribute.hpp"

#include <cstring>
#include <optional>

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

/// What is wrong with a list: the error of the first attribute that fails, and an account of all of them.
class Faults {
public:
    void add(const Parameter& parameter, const std::u16string* value, const Error& error) {
        if (!first_) first_ = error;
        if (value != nullptr) {
            const Text shown = Text(*value).substr(0, shownCharacters);
            values_.append(u"\r\n").append(toUtf16(parameter.name)).append(u"=\"").append(shown).append(u"\": ");
            values_.append(error.description());
        } else {
            missing_.append(missing_.empty() ? u"" : u", ").append(toUtf16(parameter.name));
            ++missingCount_;
        }
    }

    /// Throws the first error, if there is any, and leaves the account where it says more.
    void raise(std::u16string& account) const {
        if (!first_) return;
        if (missingCount_ == 1 && values_.empty()) {
            account = first_->description();
        } else if (missingCount_ == 0) {
            account = values_.substr(2);
        } else {
            account = u"missing in the list: " + missing_ + values_;
        }
        throw Error(*first_);
    }

private:
    static constexpr std::size_t shownCharacters = 60;

    std::optional<Error> first_;
    std::size_t missingCount_ = 0;
    std::u16string missing_;
    std::u16string values_;
};

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

void readParameterList(store::State& store, Text list, std::span<const Parameter> parameters, void* values,
                       TextStore& texts) {
    const auto root = rootOf(store, list);
    Faults faults;
    for (const Parameter& parameter : parameters) {
        const std::u16string name = toUtf16(parameter.name);
        const std::u16string* value = nullptr;
        try {
            if (!parameter.required && !root->attribute(name)) continue;
            value = &texts.emplace_back(store::requiredAttribute(*root, name));
            read(values, parameter, *value, store.decimalSeparator);
        } catch (const Error& error) {
            faults.add(parameter, value, error);
        }
    }
    faults.raise(store.lastFailure);
}

}  // namespace records

#define LIST(Name, Method) \
    std::u16string Name::xml() const { return records::listText(#Method, parametersOf<Name>, this); }
#include "quill1xml/lists/all.def"

}  // namespace quill1xml
