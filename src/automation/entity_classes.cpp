// The members of the entity classes, from the property declarations.

#include "automation/entity_classes.hpp"

#include "automation/names.hpp"
#include "quill1xml/error.hpp"

#include <array>
#include <type_traits>

namespace quill1xml::automation {
namespace {

template <class Result>
constexpr ResultType propertyType = ResultType::nothing;
template <>
constexpr ResultType propertyType<Long> = ResultType::longInteger;
template <>
constexpr ResultType propertyType<Integer> = ResultType::integer;
template <>
constexpr ResultType propertyType<Double> = ResultType::floating;
template <>
constexpr ResultType propertyType<Date> = ResultType::date;
template <>
constexpr ResultType propertyType<std::u16string> = ResultType::text;

/// What the manual says of a property, by its handling.
namespace summaries {
constexpr std::string_view decoded = "The attribute's text, decoded; empty when it is absent.";
constexpr std::string_view plain = "The attribute's text as it stands; empty when it is absent.";
constexpr std::string_view optional = "The attribute's value; -1 when it is absent.";
constexpr std::string_view optionalDate = "The attribute's value; the zero date when it is absent.";
constexpr std::string_view required = "The attribute's value; error 91 when it is absent.";
}  // namespace summaries

template <class Object, auto getter>
constexpr Member property(Long dispid, std::string_view name, std::string_view summary) {
    using Result = decltype((std::declval<const Object&>().*getter)());
    return {
        .dispid = dispid,
        .name = name,
        .kind = MemberKind::propertyGet,
        .result = propertyType<Result>,
        .summary = std::is_same_v<Result, Date> && summary == summaries::optional ? summaries::optionalDate : summary,
        .invoke = [](void* object, const void*) -> Value { return (static_cast<const Object*>(object)->*getter)(); }};
}

/// A property that makes a new collection.
template <class Object, auto getter>
constexpr Member collection(Long dispid, std::string_view name, std::string_view summary) {
    return {.dispid = dispid,
            .name = name,
            .kind = MemberKind::propertyGet,
            .result = ResultType::collection,
            .summary = summary,
            .invoke = [](void* object, const void*) -> Value {
                return toValue((static_cast<const Object*>(object)->*getter)());
            }};
}

constexpr NodeList noNode;

template <class Object>
constexpr Member initialise(std::span<const Parameter> parameter, NameTable names) {
    return {.dispid = 1,
            .name = "Initialise",
            .summary = "Sets or replaces the element that the object reads; for automation an IXMLDOMNode.",
            .parameters = parameter,
            .parameterNames = names,
            .defaults = &noNode,
            .argumentsSize = sizeof noNode,
            .invoke = [](void* object, const void* arguments) -> Value {
                static_cast<Object*>(object)->Initialise(static_cast<const NodeList*>(arguments)->nodes().front());
                return {};
            }};
}

template <class Object>
std::shared_ptr<void> create(const ports::Environment& environment) {
    return std::make_shared<Object>(Node{}, std::make_shared<const ports::Environment>(environment));
}

template <class Item>
Collection collectionOf(const std::vector<Item>& items, const Class& itemClass) {
    Collection collection{.itemClass = &itemClass, .nodes = {}, .objects = {}, .environment = nullptr};
    collection.nodes.reserve(items.size());
    collection.objects.reserve(items.size());
    for (const Item& item : items) {
        collection.nodes.push_back(item.node());
        collection.objects.push_back(item.object());
        collection.environment = item.environment();
    }
    return collection;
}

}  // namespace

Value toValue(std::vector<Customer>&& items) { return collectionOf(items, customerClass()); }
Value toValue(std::vector<Order>&& items) { return collectionOf(items, orderClass()); }
Value toValue(std::vector<Quotation>&& items) { return collectionOf(items, quotationClass()); }
Value toValue(std::vector<OrderLineItem>&& items) { return collectionOf(items, orderLineItemClass()); }
Value toValue(std::vector<QuotationLineItem>&& items) { return collectionOf(items, quotationLineItemClass()); }
Value toValue(std::vector<UserDefinedField>&& items) { return collectionOf(items, userDefinedFieldClass()); }

#define PROPERTY(dispid, Type, Name, handling, ...) property<CLASS, &CLASS::Name>(dispid, #Name, summaries::handling),
#define COLLECTION(dispid, Name, Class, child, builder) \
    collection<CLASS, &CLASS::Name>(                    \
        dispid, #Name, "A new collection of " #Class " objects, one per child element " child " in order."),

/// Defines the function that returns a class whose rows stand between begin and end.
#define QUILL1XML_BEGIN_CLASS(function, nodeParameter)                                            \
    const Class& function() {                                                                     \
        static constexpr Parameter parameter[] = {{nodeParameter, ParameterType::node, true, 0}}; \
        static constexpr auto parameterNames = tableOfNames(parameter);                           \
        static constexpr Member members[] = { initialise<CLASS>(parameter, parameterNames),
#define QUILL1XML_END_CLASS(about)                          \
    }                                                       \
    ;                                                       \
    static constexpr auto names = tableOfNames(members);    \
    static const Class described{.name = CLASS::className,  \
                                 .summary = about,          \
                                 .members = members,        \
                                 .memberNames = names,      \
                                 .create = &create<CLASS>}; \
    return described;                                       \
    }

#define CLASS Customer
QUILL1XML_BEGIN_CLASS(customerClass, "rcdCustomer")
#include "quill1xml/entities/customer.def"
QUILL1XML_END_CLASS("A customer that ReceiveCustomers or Customers returned.")
#undef CLASS

#define CLASS Order
QUILL1XML_BEGIN_CLASS(orderClass, "rcdOrder")
#include "quill1xml/entities/order.def"
QUILL1XML_END_CLASS("An order that ReceiveOrders, ReceiveOfflineProductList or Orders returned.")
#undef CLASS

#define CLASS OrderLineItem
QUILL1XML_BEGIN_CLASS(orderLineItemClass, "rcdOrderLineItem")
#include "quill1xml/entities/order_line_item.def"
QUILL1XML_END_CLASS("A line of an order, out of its LineItems.")
#undef CLASS

#define CLASS Quotation
QUILL1XML_BEGIN_CLASS(quotationClass, "rcdQuote")
#include "quill1xml/entities/quotation.def"
QUILL1XML_END_CLASS("A quotation that ReceiveQuotations or Quotations returned.")
#undef CLASS

#define CLASS QuotationLineItem
QUILL1XML_BEGIN_CLASS(quotationLineItemClass, "rcdQuoteLineItem")
#include "quill1xml/entities/quotation_line_item.def"
QUILL1XML_END_CLASS("A line of a quotation, out of its LineItems.")
#undef CLASS

#define CLASS UserDefinedField
QUILL1XML_BEGIN_CLASS(userDefinedFieldClass, "rcdUserDefinedField")
#include "quill1xml/entities/user_defined_field.def"
QUILL1XML_END_CLASS("The value of a user-defined field, out of the UDFs of an order.")
#undef CLASS

}  // namespace quill1xml::automation
