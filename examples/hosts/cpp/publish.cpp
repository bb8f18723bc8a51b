// A host in C++, for Linux and Windows: publishes a small shop, hears of each packet, fetches the orders back.
#include "apartment.hpp"
#include "quill1xml/store.hpp"
#include "quill1xml/text.hpp"

#include <exception>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

namespace {

using quill1xml::toUtf16;
using quill1xml::toUtf8;

/// What AddOrder reads: an element with every value, those that are not known too.
std::u16string orderList(quill1xml::Store& store, const std::map<std::string, std::u16string>& known) {
    constexpr const char* dates = "Order Confirmed Dispatched Cancelled Picked RequiredDelivery";
    constexpr const char* numbers =
        "OrderNumber ShippingCost ExclusiveShippingCost OrderDiscountPercent USDExchangeRate ShippingInsuranceCost "
        "WebsafeTransitCharge WebsafeFraudCharge BlnOnlinePaymentUsed BudgetPeriod BlnExported";
    constexpr const char* texts =
        "EMailAddress ShippingContactName ShippingContactNumber ShippingContactNumber2 ShippingAddressLine1 "
        "ShippingAddressLine2 ShippingAddressLine3 ShippingAddressLine4 ShippingCity ShippingPostalCode "
        "ShippingStateProvince ShippingStateProvinceName ShippingCountryCode CourierCountryCode CourierCode "
        "CourierServiceCode DeliveryZone WaybillNumber OrderStatus PaymentMethodID CreditCardNumber CreditCardExpiry "
        "CreditCardPinNumber CardType TransactionIndex BankReference Hash Message DisplayCurrencyCode SessionID "
        "CollectionPointID CollectionPoint CollectionAddressLine1 CollectionAddressLine2 CollectionAddressLine3 "
        "CollectionAddressLine4 CollectionCity CollectionPostalCode CollectionStateProvince DebtorID "
        "BillingContactName IDNumber ContactNumber ContactNumber2 BillingAddressLine1 BillingAddressLine2 "
        "BillingAddressLine3 BillingAddressLine4 BillingCity BillingPostalCode BillingStateProvince "
        "BillingStateProvinceName BillingCountryCode PurchaseNumber CustomerCompanyName";
    std::u16string list = u"<Order";
    const auto add = [&](const char* names, const char16_t* unknown) {
        std::istringstream words{names};
        for (std::string name; words >> name;) {
            const auto value = known.find(name);
            const std::u16string text = value == known.end() ? unknown : store.XMLEncode({value->second});
            list += u' ' + toUtf16(name) + u"=\"" + text + u'"';
        }
    };
    add(dates, u"1899-12-30T00:00:00");
    add(numbers, u"-1");
    add(texts, u"StringDefault");
    return list + u"/>";
}

void publish(quill1xml::Store& store) {
    store.AddTax({.strTaxCode = u"VAT", .strDescription = u"Standard rate", .dblRate = 15});
    store.AddCurrency({.strCurrencyCode = u"EUR", .strDescription = u"Euro", .dblExchangeRate = 1.0837});
    store.AddTradingCountry({.strCountryCode = u"IRL"});
    store.AddProductType({.strProductTypeID = u"TEA", .strTypeDescription = u"Teas"});
    store.AddProductGroup({.strProductGroupID = u"LEAF", .strDescription = u"Loose leaf"});
    store.AddProductCategory({.lngProductCategoryID = 7, .strDescription = u"Black teas <strong>"});
    store.AddProduct({.strSKU = u"ASSAM-100",
                      .strProductTypeID = u"TEA",
                      .strDescription = u"Assam, 100 g",
                      .strProductGroupID = u"LEAF",
                      .strTaxCode = u"VAT",
                      .dblWeight = 0.1,
                      .dblPrice1 = 7.25});
    store.AddProductAdditional({.dblQtyOnPO = 12});
    store.LockProduct();
    store.AddDebtor({.strDebtorID = u"D100", .strName = u"Murphy & Sons", .strEMailAddress = u"sam@example.com"});
    store.AddPaymentMethod({.strPaymentMethodID = u"CARD", .strName = u"Credit card", .intBlnOnlineGateway = 1});
    store.AddOrder({orderList(store, {{"OrderNumber", u"2001"},
                                      {"Order", u"2024-03-01T00:00:00"},
                                      {"EMailAddress", u"sam@example.com"},
                                      {"ShippingCost", u"4.9"},
                                      {"OrderStatus", u"Confirmed"},
                                      {"PaymentMethodID", u"CARD"},
                                      {"DebtorID", u"D100"},
                                      {"CustomerCompanyName", u"Murphy & Sons"}})});
    store.AddOrderLineItem(
        {.lngLineNumber = 1, .strSKU = u"ASSAM-100", .lngQuantity = 3, .lngActualQuantity = 3, .dblPrice = 7.25});
    store.AddOrderLineItem(
        {.lngLineNumber = 2, .strSKU = u"ASSAM-100", .lngQuantity = 1, .lngActualQuantity = 1, .dblPrice = 0});
    store.LockOrder();
}

void showRefusal(quill1xml::Store& store) {
    try {
        store.AddTax({.strTaxCode = u"MUCH-TOO-LONG"});
    } catch (const quill1xml::Error& error) {
        std::cout << "refused " << error.number() << ", " << toUtf8(error.source()) << ": "
                  << toUtf8(error.description()) << '\n';
    }
}

void showOrders(quill1xml::Store& store, const std::u16string& url) {
    const auto received = store.ReceiveOrders(
        {.lngStoreID = 57, .strUserName = u"demo", .strPassword = u"demo", .strSourceURL = url + u"/orders"});
    for (const quill1xml::Order& order : std::get<std::vector<quill1xml::Order>>(received)) {
        std::cout << "order " << order.OrderNumber() << " of " << toUtf8(order.EMailAddress()) << '\n';
        for (const quill1xml::OrderLineItem& line : order.LineItems())
            std::cout << "    line " << line.LineNumber() << ": " << line.Quantity() << " at " << line.Price() << '\n';
    }
}

}  // namespace

int main(int count, char** arguments) try {
    if (count != 4) {
        std::cerr << "usage: publish URL FOLDER SCHEMA\n";
        return 2;
    }
    const Apartment apartment;
    const std::u16string url = toUtf16(arguments[1]);
    quill1xml::Store store;
    store.onPacketUploaded([](quill1xml::Text packet, quill1xml::Long number) {
        std::cout << "uploaded " << toUtf8(packet) << ", import " << number << '\n';
    });
    store.SetTempFilePath({toUtf16(arguments[2])});
    store.Create({.strWebStoreSchemaSource = toUtf16(arguments[3]), .lngStoreID = 57, .strName = u"Coffee & Tea"});
    store.AddAdditionalParameters();
    store.AddEnvelope({u"demo", u"demo", url + u"/upload"});
    publish(store);
    showRefusal(store);
    const std::u16string packets = store.Send();
    std::cout << "sent " << toUtf8(packets) << '\n';
    showOrders(store, url);
} catch (const quill1xml::Error& error) {
    std::cerr << "error " << error.number() << ", " << toUtf8(error.source()) << ": " << error.what() << '\n';
    return 1;
} catch (const std::exception& error) {
    std::cerr << "error: " << error.what() << '\n';
    return 1;
}
