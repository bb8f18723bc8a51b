// A host in C++ over raw COM, for g++ and MSVC: publishes a small shop, hears of each packet, fetches the orders back.
#include "automation.hpp"
#include "packet_sink.hpp"

#include <iostream>
#include <map>
#include <sstream>
#include <string>

namespace {

using automation::call;
using automation::Value;

/// What AddOrder reads: an element with every value, those that are not known too.
std::wstring orderList(IDispatch* store, const std::map<std::wstring, std::wstring>& known) {
    constexpr const wchar_t* dates = L"Order Confirmed Dispatched Cancelled Picked RequiredDelivery";
    constexpr const wchar_t* numbers =
        L"OrderNumber ShippingCost ExclusiveShippingCost OrderDiscountPercent USDExchangeRate ShippingInsuranceCost "
        L"WebsafeTransitCharge WebsafeFraudCharge BlnOnlinePaymentUsed BudgetPeriod BlnExported";
    constexpr const wchar_t* texts =
        L"EMailAddress ShippingContactName ShippingContactNumber ShippingContactNumber2 ShippingAddressLine1 "
        L"ShippingAddressLine2 ShippingAddressLine3 ShippingAddressLine4 ShippingCity ShippingPostalCode "
        L"ShippingStateProvince ShippingStateProvinceName ShippingCountryCode CourierCountryCode CourierCode "
        L"CourierServiceCode DeliveryZone WaybillNumber OrderStatus PaymentMethodID CreditCardNumber CreditCardExpiry "
        L"CreditCardPinNumber CardType TransactionIndex BankReference Hash Message DisplayCurrencyCode SessionID "
        L"CollectionPointID CollectionPoint CollectionAddressLine1 CollectionAddressLine2 CollectionAddressLine3 "
        L"CollectionAddressLine4 CollectionCity CollectionPostalCode CollectionStateProvince DebtorID "
        L"BillingContactName IDNumber ContactNumber ContactNumber2 BillingAddressLine1 BillingAddressLine2 "
        L"BillingAddressLine3 BillingAddressLine4 BillingCity BillingPostalCode BillingStateProvince "
        L"BillingStateProvinceName BillingCountryCode PurchaseNumber CustomerCompanyName";
    std::wstring list = L"<Order";
    const auto add = [&](const wchar_t* names, const wchar_t* unknown) {
        std::wistringstream words{names};
        for (std::wstring name; words >> name;) {
            const auto value = known.find(name);
            const std::wstring text =
                value == known.end() ? unknown : call(store, L"XMLEncode", {value->second}).text();
            list.append(L" ").append(name).append(L"=\"").append(text).append(L"\"");
        }
    };
    add(dates, L"1899-12-30T00:00:00");
    add(numbers, L"-1");
    add(texts, L"StringDefault");
    return list + L"/>";
}

void publish(IDispatch* store) {
    call(store, L"AddTax", {L"VAT", L"Standard rate", 15});
    call(store, L"AddCurrency", {L"EUR", L"Euro"}, {{L"dblExchangeRate", 1.0837}});
    call(store, L"AddTradingCountry", {L"IRL"});
    call(store, L"AddProductType", {L"TEA", L"Teas"});
    call(store, L"AddProductGroup", {L"LEAF", L"Loose leaf"});
    call(store, L"AddProductCategory", {7, L"Black teas <strong>"});
    call(store, L"AddProduct", {L"ASSAM-100", L"TEA", L"Assam, 100 g"},
         {{L"strProductGroupID", L"LEAF"}, {L"strTaxCode", L"VAT"}, {L"dblWeight", 0.1}, {L"dblPrice1", 7.25}});
    call(store, L"AddProductAdditional", {12});
    call(store, L"LockProduct");
    call(store, L"AddDebtor", {L"D100", L"Murphy & Sons"}, {{L"strEMailAddress", L"sam@example.com"}});
    call(store, L"AddPaymentMethod", {L"CARD", L"Credit card", 1});
    call(store, L"AddOrder",
         {orderList(store, {{L"OrderNumber", L"2001"},
                            {L"Order", L"2024-03-01T00:00:00"},
                            {L"EMailAddress", L"sam@example.com"},
                            {L"ShippingCost", L"4.9"},
                            {L"OrderStatus", L"Confirmed"},
                            {L"PaymentMethodID", L"CARD"},
                            {L"DebtorID", L"D100"},
                            {L"CustomerCompanyName", L"Murphy & Sons"}})});
    call(store, L"AddOrderLineItem", {1, L"ASSAM-100", 3, 3, 7.25});
    call(store, L"AddOrderLineItem", {2, L"ASSAM-100", 1, 1, 0});
    call(store, L"LockOrder");
}

void showRefusal(IDispatch* store) {
    try {
        call(store, L"AddTax", {L"MUCH-TOO-LONG"});
    } catch (const automation::Failure& failure) {
        std::cout << "refused " << failure.number() << ", " << failure.source() << ": " << failure.what() << '\n';
    }
}

void showOrders(const Value& orders) {
    const long count = call(orders.object(), L"Count").number();
    for (long i = 1; i <= count; ++i) {
        const Value order = call(orders.object(), L"Item", {i});
        std::cout << "order " << call(order.object(), L"OrderNumber").utf8() << " of "
                  << call(order.object(), L"EMailAddress").utf8() << '\n';
        const Value lines = call(order.object(), L"LineItems");
        const long lineCount = call(lines.object(), L"Count").number();
        for (long j = 1; j <= lineCount; ++j) {
            const Value line = call(lines.object(), L"Item", {j});
            std::cout << "    line " << call(line.object(), L"LineNumber").utf8() << ": "
                      << call(line.object(), L"Quantity").utf8() << " at " << call(line.object(), L"Price").utf8()
                      << '\n';
        }
    }
}

void run(const std::wstring& url, const std::wstring& folder, const std::wstring& schema) {
    const Value object = automation::create(L"Quill1XML.Store");
    IDispatch* const store = object.object();
    const automation::Connection events(store, [](const Value& packet, const Value& number) {
        std::cout << "uploaded " << packet.utf8() << ", import " << number.utf8() << '\n';
    });
    call(store, L"SetTempFilePath", {folder});
    call(store, L"Create", {schema, 57}, {{L"strName", L"Coffee & Tea"}});
    call(store, L"AddAdditionalParameters");
    call(store, L"AddEnvelope", {L"demo", L"demo", url + L"/upload"});
    publish(store);
    showRefusal(store);
    const Value packets = call(store, L"Send");
    std::cout << "sent " << packets.utf8() << '\n';
    showOrders(call(store, L"ReceiveOrders", {57, L"demo", L"demo", url + L"/orders"}));
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 4) {
        std::cerr << "usage: publish-com URL FOLDER SCHEMA\n";
        return 2;
    }
    if (FAILED(CoInitialize(nullptr))) return 1;
    int status = 0;
    try {
        run(automation::wide(arguments[1]), automation::wide(arguments[2]), automation::wide(arguments[3]));
    } catch (const automation::Failure& failure) {
        std::cerr << "error " << failure.number() << ", " << failure.source() << ": " << failure.what() << '\n';
        status = 1;
    } catch (const std::exception& error) {
        std::cerr << "error: " << error.what() << '\n';
        status = 1;
    }
    CoUninitialize();
    return status;
}
