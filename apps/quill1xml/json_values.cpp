#include "quill1xml/json_values.hpp"

#include "quill1xml/text.hpp"
#include "text/base64.hpp"
#include "text/date.hpp"

namespace quill1xml::cli {
namespace {

using nlohmann::ordered_json;

/// The properties of an object over a node, in interface order.
ordered_json objectOf(const automation::Collection& collection, const Node& node);

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
        for (const Node& node : collection.nodes) items.push_back(objectOf(collection, node));
        return items;
    }
    ordered_json operator()(const std::u16string& text) const { return toUtf8(text); }
    ordered_json operator()(const Bytes& bytes) const {
        std::u16string text;
        appendBase64(text, bytes);
        return toUtf8(text);
    }
};

ordered_json objectOf(const automation::Collection& collection, const Node& node) {
    static const platform::Environment system = platform::systemEnvironment();
    const automation::Class& itemClass = *collection.itemClass;
    const auto object = itemClass.create(collection.environment != nullptr ? *collection.environment : system);
    ordered_json properties = ordered_json::object();
    for (const automation::Member& member : itemClass.members) {
        automation::Arguments arguments(member);
        if (member.kind == automation::MemberKind::method) {
            arguments.setNodes(0, {node});
            member.invoke(object.get(), arguments.data());
        } else {
            properties[std::string(member.name)] = toJson(member.invoke(object.get(), arguments.data()));
        }
    }
    return properties;
}

}  // namespace

ordered_json toJson(const automation::Value& value) { return std::visit(Converter{}, value); }

}  // namespace quill1xml::cli
