#include "command_line/objects.hpp"

#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <string>

namespace quill1xml::cli {
namespace {

[[noreturn]] void rethrowWith(const std::string& place, const Error& error) {
    throw Error(error.number(), error.source(), toUtf16(place) + error.description());
}

const ports::Environment& environmentOf(const automation::Collection& collection) {
    static const ports::Environment system = ports::systemEnvironment();
    return collection.environment != nullptr ? *collection.environment : system;
}

}  // namespace

Object::Object(const automation::Collection& collection, const Node& node)
    : class_(*collection.itemClass), object_(class_.create(environmentOf(collection))) {
    const automation::Member& initialise = *automation::findMember(class_, "Initialise");
    automation::Arguments arguments(initialise);
    arguments.setNodes(0, {node});
    initialise.invoke(object_.get(), arguments.data());
}

automation::Value Object::get(const automation::Member& property) const {
    try {
        return property.invoke(object_.get(), nullptr);
    } catch (const Error& error) {
        rethrowWith(std::string(property.name) + ": ", error);
    }
}

automation::Value Object::get(std::string_view property) const {
    return get(*automation::findMember(class_, property));
}

void forEachObject(const automation::Collection& collection, const std::function<void(const Object&)>& visit) {
    std::size_t place = 0;
    for (const Node& node : collection.nodes) {
        ++place;
        try {
            visit(Object(collection, node));
        } catch (const Error& error) {
            rethrowWith(std::string(collection.itemClass->name) + " " + std::to_string(place) + " of " +
                            std::to_string(collection.nodes.size()) + ", ",
                        error);
        }
    }
}

}  // namespace quill1xml::cli
