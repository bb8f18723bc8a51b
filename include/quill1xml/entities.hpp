// The downloaded records as objects: Customer, Order, OrderLineItem, Quotation, QuotationLineItem, UserDefinedField.
//
// An object wraps one element and reads it at each access; nothing is copied or kept. The properties are declared in
// entities/*.def, one row each, in interface order:
//
//   PROPERTY(dispid, Type, Name, handling)
//       Reads the attribute of that name. Handling: `decoded` text, `plain` text as it stands, an `optional` number or
//       date (-1 or the zero date when absent), or `required` (error 91 when absent). A row may go on with
//       .attribute = "…" where the attribute has another name and .label = "…" where the error log has another.
//   COLLECTION(dispid, Name, Class, "child element", "Builder")
//       The child elements of that name as objects of the class.
//
// Getters throw 91 (Object variable not set) before Initialise, 13 (Type mismatch) for a text that is no number or
// date, and 6 (Overflow) beyond the range of the type.
#pragma once

#include "quill1xml/node.hpp"
#include "quill1xml/types.hpp"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quill1xml {

namespace ports {
struct Environment;
}

/// What the getters return.
namespace property_types {
using Text = std::u16string;
using quill1xml::Date;
using quill1xml::Double;
using quill1xml::Integer;
using quill1xml::Long;
}  // namespace property_types

/// What the entity classes have in common.
class Entity {
public:
    /// An object that wraps nothing yet and logs to the system's event log.
    Entity() = default;

    /// An object over a node. The environment's log hears of failures; without one the system's does.
    Entity(Node node, std::shared_ptr<const ports::Environment> environment);

    /// As above, with the host's own object over the node.
    Entity(Node node, std::shared_ptr<const ports::Environment> environment, std::shared_ptr<void> object);

    /// Sets or replaces the wrapped node.
    void Initialise(Node node);

    const Node& node() const noexcept { return node_; }
    const std::shared_ptr<const ports::Environment>& environment() const noexcept { return environment_; }

    /// The host's own object, which the environment's objects made; null without such.
    const std::shared_ptr<void>& object() const noexcept { return object_; }

private:
    Node node_;
    std::shared_ptr<const ports::Environment> environment_;
    std::shared_ptr<void> object_;
};

#define PROPERTY(dispid, Type, Name, ...) property_types::Type Name() const;
#define COLLECTION(dispid, Name, Class, child, builder) std::vector<Class> Name() const;

class Customer : public Entity {
public:
    static constexpr std::string_view className = "Customer";
    using Entity::Entity;
#include "quill1xml/entities/customer.def"
};

class UserDefinedField : public Entity {
public:
    static constexpr std::string_view className = "UserDefinedField";
    using Entity::Entity;
#include "quill1xml/entities/user_defined_field.def"
};

class OrderLineItem : public Entity {
public:
    static constexpr std::string_view className = "OrderLineItem";
    using Entity::Entity;
#include "quill1xml/entities/order_line_item.def"
};

class Order : public Entity {
public:
    static constexpr std::string_view className = "Order";
    using Entity::Entity;
#include "quill1xml/entities/order.def"
};

class QuotationLineItem : public Entity {
public:
    static constexpr std::string_view className = "QuotationLineItem";
    using Entity::Entity;
#include "quill1xml/entities/quotation_line_item.def"
};

class Quotation : public Entity {
public:
    static constexpr std::string_view className = "Quotation";
    using Entity::Entity;
#include "quill1xml/entities/quotation.def"
};

#undef PROPERTY
#undef COLLECTION

}  // namespace quill1xml
