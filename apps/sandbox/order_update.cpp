#include "order_update.hpp"

#include <algorithm>

namespace quill1xml::sandbox {
namespace {

/// Updates carry it empty, which says nothing.
constexpr std::string_view emptyInUpdates = "CreditCardPinNumber";

constexpr std::string_view updated[] = {"OrderNumber", "ConfirmedDate", "DispatchedDate", "CancelledDate",
                                        "PickedDate",  "WaybillNumber", "OrderStatus"};

bool isEmptyPin(const std::string& name, const Json& value) {
    return name == emptyInUpdates && value.get_ref<const std::string&>().empty();
}

/// What tells two children of an order apart; empty when all are different.
const char* identityOf(std::string_view element) {
    if (element == "OrderLineItem") return "LineNumber";
    return element == "UserDefinedFieldValue" ? "FieldName" : "";
}

bool isSame(const Json& child, const Json& other) {
    const char* identity = identityOf(child.at("element").get_ref<const std::string&>());
    return child.at("element") == other.at("element") && child.at("attributes").contains(identity) &&
           child.at("attributes").at(identity) == other.at("attributes").value(identity, Json());
}

}  // namespace

bool isOrderUpdate(const Record& record) {
    if (record.kind != "Order" || record.key.empty()) return false;
    const auto items = record.attributes.items();
    return std::all_of(items.begin(), items.end(), [](const auto& item) {
        return isEmptyPin(item.key(), item.value()) || std::ranges::find(updated, item.key()) != std::end(updated);
    });
}

void addUpdate(Json& attributes, Json& children, const Record& update) {
    for (const auto& [name, value] : update.attributes.items())
        if (!isEmptyPin(name, value)) attributes[name] = value;
    for (const Json& child : update.children) {
        const auto former =
            std::find_if(children.begin(), children.end(), [&](const Json& other) { return isSame(child, other); });
        if (former == children.end()) {
            children.push_back(child);
        } else {
            *former = child;
        }
    }
}

}  // namespace quill1xml::sandbox
