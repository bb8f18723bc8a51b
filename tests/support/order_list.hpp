// Parameter lists of AddOrder and AddQuotation for tests: every attribute left out, but for those given.
#pragma once

#include "quill1xml/text.hpp"

#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace quill1xml::testing {

using Values = std::map<std::u16string, std::u16string>;

namespace detail {

/// Names, parted by blanks, with the value that stands for all that are not given.
using Usual = std::vector<std::pair<const char16_t*, const char*>>;

inline std::u16string list(const Usual& usual, const Values& given) {
    std::u16string text = u"<List";
    for (const auto& [value, names] : usual) {
        std::istringstream words(names);
        for (std::string word; words >> word;) {
            const std::u16string name = toUtf16(word);
            const auto found = given.find(name);
            const std::u16string own = found == given.end() ? value : found->second;
            if (own != u"(absent)") text.append(u" ").append(name).append(u"=\"").append(own).append(u"\"");
        }
    }
    return text + u"/>";
}

}  // namespace detail

/// "(absent)" as a value leaves the attribute out of the list altogether.
inline std::u16string orderList(const Values& given) {
    return detail::list(
        {{u"1899-12-30T00:00:00", "Order Confirmed Dispatched Cancelled Picked RequiredDelivery"},
         {u"StringDefault",
          "EMailAddress ShippingContactName ShippingContactNumber ShippingContactNumber2 ShippingAddressLine1 "
          "ShippingAddressLine2 ShippingAddressLine3 ShippingAddressLine4 ShippingCity ShippingPostalCode "
          "ShippingStateProvince ShippingStateProvinceName ShippingCountryCode CourierCountryCode CourierCode "
          "CourierServiceCode DeliveryZone WaybillNumber OrderStatus PaymentMethodID CreditCardNumber CreditCardExpiry "
          "CreditCardPinNumber CardType TransactionIndex BankReference Hash Message DisplayCurrencyCode SessionID "
          "CollectionPointID CollectionPoint CollectionAddressLine1 CollectionAddressLine2 CollectionAddressLine3 "
          "CollectionAddressLine4 CollectionCity CollectionPostalCode CollectionStateProvince DebtorID "
          "BillingContactName IDNumber ContactNumber ContactNumber2 BillingAddressLine1 BillingAddressLine2 "
          "BillingAddressLine3 BillingAddressLine4 BillingCity BillingPostalCode BillingStateProvince "
          "BillingStateProvinceName BillingCountryCode PurchaseNumber"},
         {u"1", "OrderNumber"},
         {u"-1",
          "ShippingCost ExclusiveShippingCost OrderDiscountPercent USDExchangeRate ShippingInsuranceCost "
          "WebsafeTransitCharge WebsafeFraudCharge BlnOnlinePaymentUsed BudgetPeriod BlnExported"},
         {u"(absent)", "CustomerCompanyName"}},
        given);
}

inline std::u16string quotationList(const Values& given) {
    return detail::list({{u"1899-12-30T00:00:00", "QuoteDate"},
                         {u"StringDefault",
                          "EMail ContactName ContactNumber ContactNumber2 AddressLine1 AddressLine2 AddressLine3 "
                          "AddressLine4 City PostalCode StateProvince CountryCode NearestPort NearestAirport "
                          "QuoteCurrency DeliveryMethod AdditionalInfo DebtorID"},
                         {u"1", "QuoteNumber"},
                         {u"-1", "BlnExported"}},
                        given);
}

}  // namespace quill1xml::testing
