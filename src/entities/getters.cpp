#include "entities/getters.hpp"

#include "quill1xml/error.hpp"
#include "text/numbers.hpp"
#include "text/xml_text.hpp"

namespace quill1xml::entities {
namespace {

std::optional<std::u16string> read(const Node& node, Text attribute, Handling handling) {
    auto value = node.attribute(attribute);
    if (!value && handling == Handling::required) {
        throw runtimeError(RuntimeError::objectNotSet, u"the attribute " + std::u16string(attribute) + u" is missing");
    }
    return value;
}

}  // namespace

std::u16string readText(const Node& node, Text attribute, Handling handling) {
    std::u16string value = read(node, attribute, handling).value_or(u"");
    if (handling != Handling::decoded || value.find(u'&') == std::u16string::npos) return value;
    std::u16string decoded;
    decodeXmlText(decoded, value);
    return decoded;
}

Long readLong(const Node& node, Text attribute, Handling handling) {
    const auto value = read(node, attribute, handling);
    return value ? toLong(*value) : Long{-1};
}

Integer readInteger(const Node& node, Text attribute, Handling handling) {
    const auto value = read(node, attribute, handling);
    return value ? toInteger(*value) : Integer{-1};
}

Double readDouble(const Node& node, Text attribute, Handling handling) {
    const auto value = read(node, attribute, handling);
    return value ? toDouble(*value) : Double{-1};
}

Date readDate(const Node& node, Text attribute, Handling handling) {
    const auto value = read(node, attribute, handling);
    return value ? Date::fromText(*value) : Date{};
}

}  // namespace quill1xml::entities
