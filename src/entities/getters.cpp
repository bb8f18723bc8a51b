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

/// The user's separator, which costs a call of the system, where a text may need it.
std::u16string separatorFor(Text text, const ports::System& system) {
    const bool plain = text.find_first_not_of(u"0123456789.-+ ") == Text::npos;
    return plain ? u"." : system.decimalSeparator();
}

}  // namespace

std::u16string readText(const Node& node, Text attribute, Handling handling, const ports::System&) {
    std::u16string value = read(node, attribute, handling).value_or(u"");
    if (handling != Handling::decoded || value.find(u'&') == std::u16string::npos) return value;
    std::u16string decoded;
    decodeXmlText(decoded, value);
    return decoded;
}

Long readLong(const Node& node, Text attribute, Handling handling, const ports::System& system) {
    const auto value = read(node, attribute, handling);
    return value ? toLong(*value, separatorFor(*value, system)) : Long{-1};
}

Integer readInteger(const Node& node, Text attribute, Handling handling, const ports::System& system) {
    const auto value = read(node, attribute, handling);
    return value ? toInteger(*value, separatorFor(*value, system)) : Integer{-1};
}

Double readDouble(const Node& node, Text attribute, Handling handling, const ports::System& system) {
    const auto value = read(node, attribute, handling);
    return value ? toDouble(*value, separatorFor(*value, system)) : Double{-1};
}

Date readDate(const Node& node, Text attribute, Handling handling, const ports::System&) {
    const auto value = read(node, attribute, handling);
    return value ? Date::fromText(*value) : Date{};
}

}  // namespace quill1xml::entities
