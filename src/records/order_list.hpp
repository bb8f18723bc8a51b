// The parameter list of AddOrder.
#pragma once

#include "store/parameters.hpp"

namespace quill1xml::records {

// The order is that of reading: dates before texts before numbers, the two latecomers last.
#define QUILL1XML_ORDER_LIST                                                                                           \
    (Date, Order), (Date, Confirmed), (Date, Dispatched), (Date, Cancelled), (Date, Picked), (Date, RequiredDelivery), \
        (Text, EMailAddress), (Text, ShippingContactName), (Text, ShippingContactNumber),                              \
        (Text, ShippingContactNumber2), (Text, ShippingAddressLine1), (Text, ShippingAddressLine2),                    \
        (Text, ShippingAddressLine3), (Text, ShippingAddressLine4), (Text, ShippingCity), (Text, ShippingPostalCode),  \
        (Text, ShippingStateProvince), (Text, ShippingStateProvinceName), (Text, ShippingCountryCode),                 \
        (Text, CourierCountryCode), (Text, CourierCode), (Text, CourierServiceCode), (Text, DeliveryZone),             \
        (Text, WaybillNumber), (Text, OrderStatus), (Text, PaymentMethodID), (Text, CreditCardNumber),                 \
        (Text, CreditCardExpiry), (Text, CreditCardPinNumber), (Text, CardType), (Text, TransactionIndex),             \
        (Text, BankReference), (Text, Hash), (Text, Message), (Text, DisplayCurrencyCode), (Text, SessionID),          \
        (Text, CollectionPointID), (Text, CollectionPoint), (Text, CollectionAddressLine1),                            \
        (Text, CollectionAddressLine2), (Text, CollectionAddressLine3), (Text, CollectionAddressLine4),                \
        (Text, CollectionCity), (Text, CollectionPostalCode), (Text, CollectionStateProvince), (Text, DebtorID),       \
        (Text, BillingContactName), (Text, IDNumber), (Text, ContactNumber), (Text, ContactNumber2),                   \
        (Text, BillingAddressLine1), (Text, BillingAddressLine2), (Text, BillingAddressLine3),                         \
        (Text, BillingAddressLine4), (Text, BillingCity), (Text, BillingPostalCode), (Text, BillingStateProvince),     \
        (Text, BillingStateProvinceName), (Text, BillingCountryCode), (Long, OrderNumber), (Double, ShippingCost),     \
        (Double, ExclusiveShippingCost), (Double, OrderDiscountPercent), (Double, USDExchangeRate),                    \
        (Double, ShippingInsuranceCost), (Double, WebsafeTransitCharge), (Double, WebsafeFraudCharge),                 \
        (Integer, BlnOnlinePaymentUsed), (Integer, BudgetPeriod), (Integer, BlnExported), (Text, PurchaseNumber),      \
        (Text, CustomerCompanyName, notGiven)

#define QUILL1XML_MEMBER(MemberType, name, ...) MemberType name{__VA_ARGS__};
struct OrderList {
    QUILL1XML_FOR_EACH(QUILL1XML_MEMBER, QUILL1XML_ORDER_LIST)
};
#undef QUILL1XML_MEMBER

}  // namespace quill1xml::records

namespace quill1xml {
QUILL1XML_DESCRIBE(records::OrderList, "AddOrder", QUILL1XML_ORDER_LIST)
}
#undef QUILL1XML_ORDER_LIST
