// The objects of a collection.
#pragma once

#include "automation/classes.hpp"

#include <functional>
#include <memory>

namespace quill1xml::cli {

/// An object over one node of a collection. It must not outlive the collection.
class Object {
public:
    Object(const automation::Collection& collection, const Node& node);

    const automation::Class& itemClass() const { return class_; }

    /// Throws the Error of a property that cannot be read, with the property's name before the description.
    automation::Value get(const automation::Member& property) const;

    /// As above, of a property that the class must have.
    automation::Value get(std::string_view property) const;

private:
    const automation::Class& class_;
    std::shared_ptr<void> object_;
};

/// Visits the objects in order. An Error on the way gets the object's class and place before its description:
/// "Order 2 of 4, OrderLineItem 1 of 3, Price: ...".
void forEachObject(const automation::Collection& collection, const std::function<void(const Object&)>& visit);

}  // namespace quill1xml::cli
