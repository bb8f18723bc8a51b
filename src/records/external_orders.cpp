// Orders that arose outside the web store. An order and its lines are records of their own.

#include "records/record.hpp"
#include "records/words.hpp"
#include "store/perform.hpp"

namespace quill1xml::records {
namespace {

/// Oddity: opens the order before its number is checked; an empty number leaves it closed.
void openExternalOrder(const Call& call, const Record& record) {
    if (!call.store.openExternalOrder.empty()) {
        throw Error(applicationError, record.source(),
                    u"A new External Order may not be added if an existing one is still unlocked.");
    }
    call.store.openExternalOrder = static_cast<const arguments::AddExternalOrder*>(call.arguments)->strOrderNumber;
}

void requireExternalOrder(const Call& call, const Record& record) {
    const std::size_t size = call.store.openExternalOrder.size();
    if (size < 1 || size > 20) refuse(record, record.rows.front(), call);
}

void appendOpenNumber(TextBuffer& out, const Call& call, Field) {
    appendEncoded(out, call, call.store.openExternalOrder, false);
}

constinit const Rendering openOrderNumber{&appendOpenNumber, AttributeType::text,
                                          "the number of the open external order, escaped"};

}  // namespace

// clang-format off

const Record AddExternalOrder = record<arguments::AddExternalOrder>(u"ExternalOrder", [] { return rows(
    key      ("OrderNumber",            "strOrderNumber",            notEmpty,                   asGiven,
              u"The ExternalOrder Number must cannot be empty."),
    attribute("OrderDate",              "dtmOrder",                  dateGiven,                  dateText),
    attribute("EMailAddress",           "strEmailAddress",           notDefault && atMost(255),  escaped),
    attribute("DebtorID",               "strDebtorID",               notDefault && atMost(50),   escaped),
    attribute("DeliveryContactName",    "strDeliveryContactName",    notDefault && atMost(150),  escaped),
    attribute("DeliveryContactNumber",  "strDeliveryContactNumber",  notDefault && atMost(30),   escaped),
    attribute("DeliveryContactNumber2", "strDeliveryContactNumber2", notDefault && atMost(30),   escaped),
    numbered<1, 4>(
        attribute("DeliveryAddressLine#", "strDeliveryAddressLine#", notDefault && atMost(50),   escaped)),
    attribute("DeliveryCity",           "strDeliveryCity",           notDefault && atMost(50),   escaped),
    attribute("DeliveryPostalCode",     "strDeliveryPostalCode",     notDefault && atMost(20),   escaped),
    attribute("DeliveryStateProvince",  "strDeliveryStateProvince",  notDefault && atMost(30),   escaped),
    attribute("DeliveryCountryCode",    "strDeliveryCountryCode",    length(1, 3),               escaped),
    attribute("ShippingMethod",         "strShippingMethod",         notDefault && atMost(150),  escaped),
    attribute("ShippingCost",           "dblShippingCost",           atLeast(0),                 strText),
    attribute("OrderDiscount",          "dblOrderDiscount",          atLeast(0),                 strText),
    attribute("Message",                "strMessage",                notDefault && atMost(1000), escaped),
    attribute("ShippingInsuranceCost",  "dblShippingInsuranceCost",  atLeast(0),                 strText),
    attribute("Tax",                    "dblTax",                    atLeast(0),                 strText),
    attribute("OrderStatus",            "strOrderStatus",            oneOf(orderStatuses),       escaped),
    attribute("RequiredDeliveryDate",   "dtmRequiredDelivery",       dateGiven,                  dateText),
    deleted,
    attribute("PurchaseNumber",         "strPurchaseNumber",         notDefault && atMost(50),   escaped)); },
    {.prologue = openExternalOrder});

// Oddity: "Sku" and the blank after Deleted.
const Record AddExternalOrderLineItem = record<arguments::AddExternalOrderLineItem>(u"ExternalOrderLineItem", [] { return rows(
    key      ("OrderNumber", "",               always,                    openOrderNumber,
              u"The order number must 1 to 20 characters long."),
    attribute("LineNumber",  "lngLineNumber",  above(-1),                 integerText),
    attribute("Sku",         "strSKU",         notDefault && atMost(50),  escaped),
    attribute("Description", "strDescription", notDefault && atMost(100), escaped),
    attribute("Qty",         "dblQty",         above(-1),                 strText),
    attribute("Price",       "dblPrice",       above(-1),                 strText),
    attribute("Tax",         "dblTax",         above(-1),                 strText),
    blankBeforeEquals(deleted)); },
    {.prologue = requireExternalOrder});

// clang-format on

}  // namespace quill1xml::records

namespace quill1xml::store {

void perform(State& state, const arguments::LockExternalOrder&) {
    if (state.openExternalOrder.empty()) {
        throw Error(applicationError, u"Quill1XML.Store.LockExternalOrder()",
                    u"No External Order has been created, or the current External Order has already been Locked.");
    }
    state.openExternalOrder.clear();
}

}  // namespace quill1xml::store
