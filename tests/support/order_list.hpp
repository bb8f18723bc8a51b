// Parameter lists of AddOrder and AddQuotation for tests: every attribute left out, but for those given.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quill1xml::testing {

using Values = std::map<std::u16string, std::u16string>;

namespace detail {

inline std::u16string list(const std::vector<std::pair<const char16_t*, std::vector<const char16_t*>>>& names,
                           const Values& given) {
    std::u16string text = u"<List";
    for (const auto& [usual, attributes] : names) {
        for (const char16_t* name : attributes) {
            const auto found = given.find(name);
            const std::u16string value = found == given.end() ? usual : found->second;
            if (value != u"(absent)") text.append(u" ").append(name).append(u"=\"").append(value).append(u"\"");
        }
    }
    return text + u"/>";
}

}  // namespace detail

/// "(absent)" as a value leaves the attribute out of the list altogether.
inline std::u16string orderList(const Values& given) {
    return detail::list({{u"1899-12-30T00:00:00",
                          {u"Order", u"Confirmed", u"Dispatched", u"Cancelled", u"Picked", u"RequiredDelivery"}},
                         {u"StringDefault",
                          {u"EMailAddress",
                           u"ShippingContactName",
                           u"ShippingContactNumber",
                           u"ShippingContactNumber2",
                           u"ShippingAddressLine1",
                           u"ShippingAddressLine2",
                           u"ShippingAddressLine3",
                           u"ShippingAddressLine4",
                           u"ShippingCity",
                           u"ShippingPostalCode",
                           u"ShippingStateProvince",
                           u"ShippingStateProvinceName",
                           u"ShippingCountryCode",
                           u"CourierCountryCode",
                           u"CourierCode",
                           u"CourierServiceCode",
                           u"DeliveryZone",
                           u"WaybillNumber",
                           u"OrderStatus",
                           u"PaymentMethodID",
                           u"CreditCardNumber",
                           u"CreditCardExpiry",
                           u"CreditCardPinNumber",
                           u"CardType",
                           u"TransactionIndex",
                           u"BankReference",
                           u"Hash",
                           u"Message",
                           u"DisplayCurrencyCode",
                           u"SessionID",
                           u"CollectionPointID",
                           u"CollectionPoint",
                           u"CollectionAddressLine1",
                           u"CollectionAddressLine2",
                           u"CollectionAddressLine3",
                           u"CollectionAddressLine4",
                           u"CollectionCity",
                           u"CollectionPostalCode",
                           u"CollectionStateProvince",
                           u"DebtorID",
                           u"BillingContactName",
                           u"IDNumber",
                           u"ContactNumber",
                           u"ContactNumber2",
                           u"BillingAddressLine1",
                           u"BillingAddressLine2",
                           u"BillingAddressLine3",
                           u"BillingAddressLine4",
                           u"BillingCity",
                           u"BillingPostalCode",
                           u"BillingStateProvince",
                           u"BillingStateProvinceName",
                           u"BillingCountryCode",
                           u"PurchaseNumber"}},
                         {u"1", {u"OrderNumber"}},
                         {u"-1",
                          {u"ShippingCost", u"ExclusiveShippingCost", u"OrderDiscountPercent", u"USDExchangeRate",
                           u"ShippingInsuranceCost", u"WebsafeTransitCharge", u"WebsafeFraudCharge",
                           u"BlnOnlinePaymentUsed", u"BudgetPeriod", u"BlnExported"}},
                         {u"(absent)", {u"CustomerCompanyName"}}},
                        given);
}

inline std::u16string quotationList(const Values& given) {
    return detail::list(
        {{u"1899-12-30T00:00:00", {u"QuoteDate"}},
         {u"StringDefault",
          {u"EMail", u"ContactName", u"ContactNumber", u"ContactNumber2", u"AddressLine1", u"AddressLine2",
           u"AddressLine3", u"AddressLine4", u"City", u"PostalCode", u"StateProvince", u"CountryCode", u"NearestPort",
           u"NearestAirport", u"QuoteCurrency", u"DeliveryMethod", u"AdditionalInfo", u"DebtorID"}},
         {u"1", {u"QuoteNumber"}},
         {u"-1", {u"BlnExported"}}},
        given);
}

}  // namespace quill1xml::testing
