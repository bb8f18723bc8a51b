#include "quill1xml/entities.hpp"

#include "entities/getters.hpp"
#include "quill1xml/ports.hpp"
#include "store/error_log.hpp"
#include "store/items.hpp"

#include <string_view>
#include <utility>

namespace quill1xml {
namespace {

using enum entities::Handling;
using entities::readDate;
using entities::readDouble;
using entities::readInteger;
using entities::readLong;
using entities::readText;
namespace labels = store::labels;

/// The names of a property's attribute and label, where they are not its own.
struct Names {
    std::u16string_view attribute{};
    std::string_view label{};
};

constexpr Names named(std::u16string_view attribute, std::string_view label, const Names& own) {
    return {own.attribute.empty() ? attribute : own.attribute, own.label.empty() ? label : own.label};
}

const ports::Environment& environmentOf(const Entity& entity) {
    static const ports::Environment system = ports::systemEnvironment();
    return entity.environment() != nullptr ? *entity.environment() : system;
}

/// Runs a getter in the error trap of its property.
template <class Read>
auto get(const Entity& entity, std::string_view classLabel, std::string_view property, const Read& read) {
    return store::logged(environmentOf(entity), {.text = classLabel, .member = property}, read);
}

template <class Item>
std::vector<Item> children(const Entity& entity, Text name, std::string_view classLabel, std::string_view builder) {
    std::vector<Node> nodes = entity.node().children(name);
    return store::logged(environmentOf(entity), {.text = classLabel, .member = builder, .suffix = "()"},
                         [&] { return store::itemsOf<Item>(std::move(nodes), entity.environment()); });
}

}  // namespace

Entity::Entity(Node node, std::shared_ptr<const ports::Environment> environment)
    : Entity(std::move(node), std::move(environment), nullptr) {}

Entity::Entity(Node node, std::shared_ptr<const ports::Environment> environment, std::shared_ptr<void> object)
    : node_(std::move(node)), environment_(std::move(environment)), object_(std::move(object)) {}

void Entity::Initialise(Node node) { node_ = std::move(node); }

#define PROPERTY(dispid, Type, Name, handling, ...)                                 \
    property_types::Type CLASS::Name() const {                                      \
        static constexpr Names names = named(u"" #Name, #Name, Names{__VA_ARGS__}); \
        return get(*this, CLASS_LABEL, names.label, [this] {                        \
            const ports::System& system = *environmentOf(*this).system;             \
            return read##Type(node(), names.attribute, handling, system);           \
        });                                                                         \
    }
#define COLLECTION(dispid, Name, Class, child, builder)                                         \
    std::vector<Class> CLASS::Name() const {                                                    \
        return get(*this, CLASS_LABEL, #Name,                                                   \
                   [this] { return children<Class>(*this, u"" child, CLASS_LABEL, builder); }); \
    }

#define CLASS Customer
#define CLASS_LABEL labels::customer
#include "quill1xml/entities/customer.def"
#undef CLASS
#undef CLASS_LABEL

#define CLASS UserDefinedField
#define CLASS_LABEL labels::userDefinedField
#include "quill1xml/entities/user_defined_field.def"
#undef CLASS
#undef CLASS_LABEL

#define CLASS OrderLineItem
#define CLASS_LABEL labels::orderLineItem
#include "quill1xml/entities/order_line_item.def"
#undef CLASS
#undef CLASS_LABEL

#define CLASS Order
#define CLASS_LABEL labels::order
#include "quill1xml/entities/order.def"
#undef CLASS
#undef CLASS_LABEL

#define CLASS QuotationLineItem
#define CLASS_LABEL labels::quotationLineItem
#include "quill1xml/entities/quotation_line_item.def"
#undef CLASS
#undef CLASS_LABEL

#define CLASS Quotation
#define CLASS_LABEL labels::quotation
#include "quill1xml/entities/quotation.def"
#undef CLASS
#undef CLASS_LABEL

}  // namespace quill1xml
