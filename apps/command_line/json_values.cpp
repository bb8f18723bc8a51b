#include "command_line/json_values.hpp"

#include "command_line/objects.hpp"
#include "quill1xml/text.hpp"
#include "text/base64.hpp"
#include "text/date.hpp"

namespace quill1xml::cli {
namespace {

using nlohmann::ordered_json;

/// The properties of an object, in interface order.
ordered_json propertiesOf(const Object& object);

struct Converter {
    ordered_json operator()(std::monostate) const { return nullptr; }
    ordered_json operator()(Long number) const { return number; }
    ordered_json operator()(Integer number) const { return number; }
    ordered_json operator()(Double number) const { return number; }
    ordered_json operator()(Date date) const {
        std::u16string text;
        appendDateText(text, date);
        return toUtf8(text);
    }
    ordered_json operator()(const Document& document) const { return toUtf8(document.xml()); }
    ordered_json operator()(const automation::Collection& collection) const {
        ordered_json items = ordered_json::array();
        forEachObject(collection, [&items](const Object& object) { items.push_back(propertiesOf(object)); });
        return items;
    }
    ordered_json operator()(const std::u16string& text) const { return toUtf8(text); }
    ordered_json operator()(const Bytes& bytes) const {
        std::u16string text;
        appendBase64(text, bytes);
        return toUtf8(text);
    }
};

ordered_json propertiesOf(const Object& object) {
    ordered_json properties = ordered_json::object();
    for (const automation::Member& member : object.itemClass().members) {
        if (member.kind == automation::MemberKind::propertyGet) {
            properties[std::string(member.name)] = toJson(object.get(member));
        }
    }
    return properties;
}

}  // namespace

ordered_json toJson(const automation::Value& value) { return std::visit(Converter{}, value); }

}  // namespace quill1xml::cli
