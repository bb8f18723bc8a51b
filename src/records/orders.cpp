// Orders: built over several calls and written by LockOrder; updates of orders that the store already holds.

#include "quill1xml/text.hpp"
#include "records/parameter_list.hpp"
#include "records/record.hpp"
#include "records/words.hpp"
#include "store/perform.hpp"
#include "text/date.hpp"
#include "text/letter_case.hpp"
#include "text/numbers.hpp"
#include "text/xml_attribute.hpp"

#include <algorithm>

namespace quill1xml::records {
namespace {

void openOrder(store::State& store, const Record&, std::u16string_view startTag) { store.openOrder = startTag; }

void addFieldValue(store::State& store, const Record&, std::u16string_view element) {
    store.orderFieldValues.append(u"\r\n").append(element);
}

void addLine(store::State& store, const Record&, std::u16string_view element) {
    store.orderLines.append(u"\r\n").append(element);
}

constexpr Condition taxCode = notDefault && length(1, 10);

}  // namespace

// clang-format off

const Record AddOrder = record<OrderList>(u"Order", [] { return rows(
    key      ("OrderNumber",               "OrderNumber",               atLeast(1),                 integerText,
              u"The Order Number must be a positive integer."),
    attribute("OrderDate",                 "Order",                     dateGiven,                  dateText),
    attribute("EMailAddress",              "EMailAddress",              notDefault && atMost(255),  escapedAll),
    attribute("ShippingContactName",       "ShippingContactName",       notDefault && atMost(150),  escapedAll),
    attribute("ShippingContactNumber",     "ShippingContactNumber",     notDefault && atMost(30),   escaped),
    attribute("ShippingContactNumber2",    "ShippingContactNumber2",    notDefault && atMost(30),   escaped),
    numbered<1, 4>(
        attribute("ShippingAddressLine#",  "ShippingAddressLine#",      notDefault && atMost(50),   escaped)),
    attribute("ShippingCity",              "ShippingCity",              notDefault && atMost(50),   escapedAll),
    attribute("ShippingPostalCode",        "ShippingPostalCode",        notDefault && atMost(20),   escaped),
    attribute("ShippingStateProvince",     "ShippingStateProvince",     notDefault && atMost(30),   escaped),
    attribute("ShippingStateProvinceName", "ShippingStateProvinceName", notDefault && atMost(255),  escaped),
    attribute("ShippingCountryCode",       "ShippingCountryCode",       length(1, 3),               escaped),
    attribute("CourierCountryCode",        "CourierCountryCode",        length(1, 3),               escaped),
    attribute("CourierCode",               "CourierCode",               notDefault && atMost(20),   escaped),
    attribute("CourierServiceCode",        "CourierServiceCode",        notDefault && atMost(20),   escaped),
    attribute("DeliveryZone",              "DeliveryZone",              notDefault && atMost(20),   escaped),
    attribute("ShippingCost",              "ShippingCost",              atLeast(0),                 numberText),
    attribute("ExclusiveShippingCost",     "ExclusiveShippingCost",     atLeast(0),                 numberText),
    attribute("ConfirmedDate",             "Confirmed",                 dateGiven,                  dateText),
    attribute("DispatchedDate",            "Dispatched",                dateGiven,                  dateText),
    attribute("CancelledDate",             "Cancelled",                 dateGiven,                  dateText),
    attribute("PickedDate",                "Picked",                    dateGiven,                  dateText),
    attribute("WaybillNumber",             "WaybillNumber",             notDefault && atMost(255),  escaped),
    attribute("OrderStatus",               "OrderStatus",               oneOf(orderStatuses),       asGiven),
    attribute("PaymentMethodID",           "PaymentMethodID",           length(1, 4),               escaped),
    attribute("CreditCardNumber",          "CreditCardNumber",          notDefault && atMost(255),  escaped),
    attribute("CreditCardExpiry",          "CreditCardExpiry",          notDefault && atMost(7),    escaped),
    attribute("CreditCardPinNumber",       "CreditCardPinNumber",       notDefault && atMost(3),    escaped),
    attribute("OnlinePaymentUsed",         "BlnOnlinePaymentUsed",      noOrYes,                    integerText),
    attribute("CardType",                  "CardType",                  notDefault && atMost(20),   escaped),
    attribute("TransactionIndex",          "TransactionIndex",          notDefault && atMost(100),  escaped),
    attribute("BankReference",             "BankReference",             notDefault && atMost(100),  escaped),
    attribute("Hash",                      "Hash",                      notDefault && atMost(100),  escaped),
    attribute("OrderDiscountPercent",      "OrderDiscountPercent",      between(0, 100),            numberText),
    attribute("RequiredDeliveryDate",      "RequiredDelivery",          dateGiven,                  dateText),
    attribute("Message",                   "Message",                   notDefault && atMost(1000), escapedAll),
    attribute("DisplayCurrencyCode",       "DisplayCurrencyCode",       length(1, 3),               escaped),
    attribute("USDExchangeRate",           "USDExchangeRate",           above(0),                   numberText),
    attribute("ShippingInsuranceCost",     "ShippingInsuranceCost",     atLeast(0),                 numberText),
    attribute("WebsafeTransitCharge",      "WebsafeTransitCharge",      atLeast(0),                 numberText),
    attribute("WebsafeFraudCharge",        "WebsafeFraudCharge",        atLeast(0),                 numberText),
    attribute("SessionID",                 "SessionID",                 notDefault && atMost(38),   guidBody),
    attribute("BudgetPeriod",              "BudgetPeriod",              atLeast(0),                 integerText),
    attribute("CollectionPointID",         "CollectionPointID",         notDefault && atMost(38),   guidBody),
    attribute("CollectionPoint",           "CollectionPoint",           notDefault && atMost(30),   escaped),
    numbered<1, 4>(
        attribute("CollectionAddressLine#", "CollectionAddressLine#",   notDefault && atMost(50),   escaped)),
    attribute("CollectionCity",            "CollectionCity",            notDefault && atMost(50),   escapedAll),
    attribute("CollectionPostalCode",      "CollectionPostalCode",      notDefault && atMost(20),   escaped),
    attribute("CollectionStateProvince",   "CollectionStateProvince",   notDefault && atMost(30),   escaped),
    attribute("DebtorID",                  "DebtorID",                  notDefault && atMost(50),   escaped),
    attribute("BillingContactName",        "BillingContactName",        notDefault && atMost(150),  escapedAll),
    attribute("IDNumber",                  "IDNumber",                  notDefault && atMost(30),   escaped),
    attribute("ContactNumber",             "ContactNumber",             notDefault && atMost(50),   escaped),
    attribute("ContactNumber2",            "ContactNumber2",            notDefault && atMost(50),   escaped),
    numbered<1, 4>(
        attribute("BillingAddressLine#",   "BillingAddressLine#",       notDefault && atMost(50),   escaped)),
    attribute("BillingCity",               "BillingCity",               notDefault && atMost(50),   escapedAll),
    attribute("BillingPostalCode",         "BillingPostalCode",         notDefault && atMost(20),   escaped),
    attribute("BillingStateProvince",      "BillingStateProvince",      notDefault && atMost(30),   escaped),
    attribute("BillingStateProvinceName",  "BillingStateProvinceName",  notDefault && atMost(255),  escaped),
    attribute("BillingCountryCode",        "BillingCountryCode",        notDefault && atMost(30),   escaped),
    attribute("Exported",                  "BlnExported",               noOrYes,                    integerText),
    attribute("PurchaseNumber",            "PurchaseNumber",            notDefault && atMost(50),   escaped),
    attribute("CustomerCompanyName",       "CustomerCompanyName",       notDefault && atMost(50),   escaped)); },
    {.end = u">", .carriesStoreId = true, .delivery = openOrder});

// Oddity: the field name decides about the value too.
const Record AddOrderUDFValue = record<arguments::AddOrderUDFValue>(u"UserDefinedFieldValue", [] { return rows(
    attribute("OrderNumber", "lngOrderNumber", always,                               integerText),
    attribute("FieldName",   "strFieldName",   length(1, 30),                        escaped),
    attribute("FieldValue",  "strFieldValue",  when("strFieldName", length(1, 255)), escaped)); },
    {.parent = u"Order", .delivery = addFieldValue});

// Oddity: both quantities go by the actual one.
const Record AddOrderLineItem = record<arguments::AddOrderLineItem>(u"OrderLineItem", [] { return rows(
    key      ("LineNumber",                "lngLineNumber",                atLeast(1),                    integerText,
              u"The Line Number must be a positive integer."),
    attribute("SKU",                       "strSKU",                       notDefault && length(1, 255),  escaped),
    attribute("Quantity",                  "lngQuantity",                  when("lngActualQuantity", above(-1)), integerText),
    attribute("ActualQuantity",            "lngActualQuantity",            above(-1),                     integerText),
    attribute("Price",                     "dblPrice",                     above(-1),                     numberText),
    attribute("HandlingCost",              "dblHandlingCost",              above(-1),                     numberText),
    attribute("TaxAmount",                 "dblTaxAmount",                 above(-1),                     numberText),
    attribute("DiscountPercent",           "dblDiscountPercent",           between(0, 100),               numberText),
    attribute("TaxCode",                   "strTaxCode",                   taxCode,                       escaped),
    otherwise(attribute("TaxCode",         "strBVTaxCode1",                taxCode,                       escaped)),
    attribute("Description",               "strDescription",               notDefault && atMost(255),     escapedAll),
    attribute("PriceBeforeDebtorDiscount", "dblPriceBeforeDebtorDiscount", above(-1),                     numberText),
    numbered<2, 4>(
        attribute("TaxCode#",              "strBVTaxCode#",                taxCode,                       escaped)),
    attribute("UnitOfMeasure",             "strUnitOfMeasure",             notDefault,                    escaped),
    attribute("LineShippingAmount",        "dblLineShippingAmount",        above(-1),                     numberText),
    attribute("CustomerFreeShipping",      "intCustomerFreeShipping",      above(-1),                     integerText)); },
    {.parent = u"Order", .delivery = addLine});

// clang-format on

}  // namespace quill1xml::records

namespace quill1xml::store {
namespace {

std::u16string dateText(Date date) {
    std::u16string text;
    appendDateText(text, date);
    return text;
}

/// The value of a list attribute that AddOrder leaves out.
std::u16string leftOut(const Parameter& parameter) {
    switch (parameter.type) {
        case ParameterType::date: return dateText({});
        case ParameterType::text: return std::u16string(notGiven);
        default: return u"-1";
    }
}

/// The value of a list attribute in an update.
std::u16string updateValue(const State& state, const Parameter& parameter, const arguments::UpdateOrder& arguments) {
    if (parameter.type == ParameterType::date &&
        equalIgnoringCase(Text(toUtf16(parameter.name)), arguments.strOrderStatus)) {
        const bool dated = parameter.name != "Order" && parameter.name != "RequiredDelivery";
        if (dated) return dateText(state.environment.clock->now());
    }
    std::u16string value;
    if (parameter.name == "OrderNumber") {
        appendInteger(value, arguments.lngOrderNumber);
    } else if (parameter.name == "WaybillNumber") {
        value = arguments.strWaybillNumber;
    } else if (parameter.name == "OrderStatus") {
        state.xmlText.encode(value, arguments.strOrderStatus, false);
    } else if (parameter.name != "CreditCardPinNumber") {
        // Oddity: the card's pin stays empty, which AddOrder writes: every update has it.
        value = leftOut(parameter);
    }
    return value;
}

}  // namespace

void perform(State& state, const arguments::AddOrder& arguments) {
    state.lastFailure.clear();
    if (!state.openOrder.empty()) {
        throw Error(applicationError, records::AddOrder.source(),
                    u"A new Order may not be added if an existing one is still unlocked.");
    }
    records::TextStore texts;
    const auto order = records::readParameterList<OrderList>(state, arguments.strXMLParameterList, texts);
    records::write(state, records::AddOrder, &order);
}

void perform(State& state, const arguments::LockOrder&) {
    if (state.openOrder.empty()) {
        throw Error(applicationError, u"Quill1XML.Store.LockOrder()",
                    u"No Order has been created, or the current Order has already been Locked.");
    }
    // Closed before it is written: an order whose write fails is lost.
    TextBuffer& order = state.element;
    order.clear();
    for (const Text part : {Text(state.openOrder), Text(state.orderFieldValues), Text(state.orderLines)}) {
        order.append(part);
    }
    order.append(u"</Order>");
    state.openOrder.clear();
    state.orderFieldValues.clear();
    state.orderLines.clear();
    records::appendToPacket(state, records::AddOrder, order.view());
}

void perform(State& state, const arguments::UpdateOrder& arguments) {
    std::u16string list(u"<Order");
    for (const Parameter& parameter : parametersOf<OrderList>) {
        appendXmlAttribute(list, toUtf16(parameter.name), updateValue(state, parameter, arguments));
    }
    list.append(u"/>");
    run(state, arguments::AddOrder{list});
    run(state, arguments::LockOrder{});
}

}  // namespace quill1xml::store
