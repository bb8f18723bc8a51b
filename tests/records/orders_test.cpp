#include "support/order_list.hpp"
#include "support/records.hpp"

#include "records/elements.hpp"

namespace quill1xml {
namespace {

using testing::expectRefused;
using testing::expectWritten;
using testing::orderList;
using testing::quotationList;
using testing::utf8;
using testing::Values;

std::string lockedOrder(const Values& values) {
    return testing::writtenBy([&](Store& s) {
        s.AddOrder({orderList(values)});
        s.LockOrder();
    });
}

std::string lockedQuote(const Values& values) {
    return testing::writtenBy([&](Store& s) {
        s.AddQuotation({quotationList(values)});
        s.LockQuote();
    });
}

TEST(Orders, WriteTheirAttributesInTheirOwnOrder) {
    EXPECT_EQ(lockedOrder({}), R"(<Order OrderNumber="1"></Order>)");
    const std::u16string date = u"2008-03-15T14:05:09";
    const std::u16string guid = u"{12345678-1234-1234-1234-123456789012}";
    EXPECT_EQ(
        lockedOrder({{u"OrderNumber", u"1001"},
                     {u"Order", date},
                     {u"Confirmed", date},
                     {u"Dispatched", date},
                     {u"Cancelled", date},
                     {u"Picked", date},
                     {u"RequiredDelivery", u"2008-03-15"},
                     {u"EMailAddress", u"ren\u00E9@x"},
                     {u"ShippingContactName", u"Zo\u00EB \u201CZ\u201D &amp; Co"},
                     {u"ShippingContactNumber", u"1"},
                     {u"ShippingContactNumber2", u"2"},
                     {u"ShippingAddressLine1", u""},
                     {u"ShippingAddressLine4", u"Line \u201C4\u201D"},
                     {u"ShippingCity", u"K\u00F6ln"},
                     {u"ShippingPostalCode", u"P"},
                     {u"ShippingStateProvince", u"S"},
                     {u"ShippingStateProvinceName", u"N"},
                     {u"ShippingCountryCode", u"DE"},
                     {u"CourierCountryCode", u"ZAF"},
                     {u"CourierCode", u"C"},
                     {u"CourierServiceCode", u"V"},
                     {u"DeliveryZone", u"Z"},
                     {u"ShippingCost", u"0"},
                     {u"ExclusiveShippingCost", u"12.5"},
                     {u"WaybillNumber", u"W"},
                     {u"OrderStatus", u"OnHold"},
                     {u"PaymentMethodID", u"CARD"},
                     {u"CreditCardNumber", u"4"},
                     {u"CreditCardExpiry", u"12/2030"},
                     {u"CreditCardPinNumber", u"123"},
                     {u"BlnOnlinePaymentUsed", u"1"},
                     {u"CardType", u"V"},
                     {u"TransactionIndex", u"T"},
                     {u"BankReference", u"B"},
                     {u"Hash", u"H"},
                     {u"OrderDiscountPercent", u"100"},
                     {u"Message", u"\u20AC\u0416"},
                     {u"DisplayCurrencyCode", u"EUR"},
                     {u"USDExchangeRate", u"0.5"},
                     {u"ShippingInsuranceCost", u"1"},
                     {u"WebsafeTransitCharge", u"2"},
                     {u"WebsafeFraudCharge", u"3"},
                     {u"SessionID", guid},
                     {u"BudgetPeriod", u"6"},
                     {u"CollectionPointID", guid},
                     {u"CollectionPoint", u"P"},
                     {u"CollectionAddressLine2", u"2"},
                     {u"CollectionCity", u"C"},
                     {u"CollectionPostalCode", u"P"},
                     {u"CollectionStateProvince", u"S"},
                     {u"DebtorID", u"D"},
                     {u"BillingContactName", u"B"},
                     {u"IDNumber", u"I"},
                     {u"ContactNumber", u"1"},
                     {u"ContactNumber2", u"2"},
                     {u"BillingAddressLine3", u"3"},
                     {u"BillingCity", u"C"},
                     {u"BillingPostalCode", u"P"},
                     {u"BillingStateProvince", u"S"},
                     {u"BillingStateProvinceName", u"N"},
                     {u"BillingCountryCode", u"Country"},
                     {u"BlnExported", u"0"},
                     {u"PurchaseNumber", u"PO"},
                     {u"CustomerCompanyName", u"Firm"}}),
        "<Order OrderNumber=\"1001\" OrderDate=\"2008-03-15T14:05:09\" EMailAddress=\"ren&#233;@x\" "
        "ShippingContactName=\"Zo&#235; &#147;Z&#148; &amp; Co\" ShippingContactNumber=\"1\" "
        "ShippingContactNumber2=\"2\" ShippingAddressLine1=\"\" ShippingAddressLine4=\"Line &quot;4&quot;\" "
        "ShippingCity=\"K&#246;ln\" ShippingPostalCode=\"P\" ShippingStateProvince=\"S\" "
        "ShippingStateProvinceName=\"N\" ShippingCountryCode=\"DE\" CourierCountryCode=\"ZAF\" CourierCode=\"C\" "
        "CourierServiceCode=\"V\" DeliveryZone=\"Z\" ShippingCost=\"0\" ExclusiveShippingCost=\"12.5\" "
        "ConfirmedDate=\"2008-03-15T14:05:09\" DispatchedDate=\"2008-03-15T14:05:09\" "
        "CancelledDate=\"2008-03-15T14:05:09\" PickedDate=\"2008-03-15T14:05:09\" WaybillNumber=\"W\" "
        "OrderStatus=\"OnHold\" PaymentMethodID=\"CARD\" CreditCardNumber=\"4\" CreditCardExpiry=\"12/2030\" "
        "CreditCardPinNumber=\"123\" OnlinePaymentUsed=\"1\" CardType=\"V\" TransactionIndex=\"T\" "
        "BankReference=\"B\" Hash=\"H\" OrderDiscountPercent=\"100\" RequiredDeliveryDate=\"2008-03-15T00:00:00\" "
        "Message=\"&#128;\u0416\" DisplayCurrencyCode=\"EUR\" USDExchangeRate=\"0.5\" ShippingInsuranceCost=\"1\" "
        "WebsafeTransitCharge=\"2\" WebsafeFraudCharge=\"3\" SessionID=\"12345678-1234-1234-1234-123456789012\" "
        "BudgetPeriod=\"6\" CollectionPointID=\"12345678-1234-1234-1234-123456789012\" CollectionPoint=\"P\" "
        "CollectionAddressLine2=\"2\" CollectionCity=\"C\" CollectionPostalCode=\"P\" CollectionStateProvince=\"S\" "
        "DebtorID=\"D\" BillingContactName=\"B\" IDNumber=\"I\" ContactNumber=\"1\" ContactNumber2=\"2\" "
        "BillingAddressLine3=\"3\" BillingCity=\"C\" BillingPostalCode=\"P\" BillingStateProvince=\"S\" "
        "BillingStateProvinceName=\"N\" BillingCountryCode=\"Country\" Exported=\"0\" PurchaseNumber=\"PO\" "
        "CustomerCompanyName=\"Firm\"></Order>");
}

TEST(Orders, LeaveOutWhatDoesNotFit) {
    const struct {
        const char16_t* name;
        std::u16string value;
    } cases[] = {{u"ShippingAddressLine1", std::u16string(51, u'x')},
                 {u"OrderStatus", u"onhold"},
                 {u"OrderStatus", u"Open"},
                 {u"SessionID", std::u16string(39, u'x')},
                 {u"ShippingCountryCode", u""},
                 {u"PaymentMethodID", u"12345"},
                 {u"USDExchangeRate", u"0"},
                 {u"OrderDiscountPercent", u"100.5"},
                 {u"BlnExported", u"2"}};
    for (const auto& c : cases) EXPECT_EQ(lockedOrder({{c.name, c.value}}), R"(<Order OrderNumber="1"></Order>)");
}

TEST(Orders, TakeValuesAndLinesEachOnALineOfItsOwn) {
    const std::u16string name31(31, u'n');
    expectWritten({
        {[&](Store& s) {
             // What comes before an order is open goes into it; values go before lines.
             s.AddOrderLineItem({.lngLineNumber = 1, .lngQuantity = 5});
             s.AddOrder({orderList({})});
             s.AddOrderUDFValue({9, u"Gift <1>", u"yes"});
             s.AddOrderLineItem({2, u"S&1", 5, 0, -0.5, 1, 2, 100, u"T", u"Caf\u00E9 \u201C\u0416\u201D", 3, u"V1",
                                 u"V2", u"V3", u"V4", u"kg", 4, 1});
             s.LockOrder();
         },
         "<Order OrderNumber=\"1\">"
         "\r\n<UserDefinedFieldValue OrderNumber=\"9\" FieldName=\"Gift &#60;1&#62;\" FieldValue=\"yes\"/>"
         "\r\n<OrderLineItem LineNumber=\"1\"/>"
         "\r\n<OrderLineItem LineNumber=\"2\" SKU=\"S&amp;1\" Quantity=\"5\" ActualQuantity=\"0\" Price=\"-0.5\" "
         "HandlingCost=\"1\" TaxAmount=\"2\" DiscountPercent=\"100\" TaxCode=\"T\" "
         "Description=\"Caf&#233; &#147;\u0416&#148;\" PriceBeforeDebtorDiscount=\"3\" TaxCode2=\"V2\" TaxCode3=\"V3\" "
         "TaxCode4=\"V4\" UnitOfMeasure=\"kg\" LineShippingAmount=\"4\" CustomerFreeShipping=\"1\"/></Order>"},
        {[&](Store& s) {
             s.AddOrder({orderList({})});
             s.AddOrderUDFValue({0, name31});
             s.AddOrderUDFValue({0, u"", u"lost"});
             s.AddOrderLineItem(
                 {.lngLineNumber = 1, .dblPrice = -1, .strTaxCode = u"12345678901", .strBVTaxCode1 = u"V1"});
             s.LockOrder();
         },
         "<Order OrderNumber=\"1\">\r\n<UserDefinedFieldValue OrderNumber=\"0\" FieldValue=\"StringDefault\"/>"
         "\r\n<UserDefinedFieldValue OrderNumber=\"0\"/>\r\n<OrderLineItem LineNumber=\"1\" TaxCode=\"V1\"/></Order>"},
    });
}

TEST(Orders, FillPacketsOfTheirStore) {
    testing::FakeEnvironment fake;
    Store store(fake.environment());
    store.SetTempFilePath({u"P"});
    store.SetStoreID({12});
    store.SetPacketSize({2});
    for (int i = 0; i < 3; ++i) {
        store.AddOrder({orderList({})});
        store.LockOrder();
    }
    store.AddQuotation({quotationList({})});
    store.LockQuote();
    std::vector<std::string> names;
    for (const auto& [name, text] : fake.files->texts) names.push_back(utf8(name));
    EXPECT_EQ(names, (std::vector<std::string>{"P\\WebStoreOrder12_1.tmp", "P\\WebStoreOrder12_2.tmp",
                                               "P\\WebStoreQuote12_1.tmp"}));
}

TEST(Orders, ReadTheListInItsOrderAndNameTheFirstFault) {
    const std::u16string noList = u"<List";
    expectRefused({
        {[](Store& s) {
             s.AddOrder({orderList({{u"OrderNumber", u"0"}})});
         },
         applicationError, "Quill1XML.Store.AddOrder()", "The Order Number must be a positive integer."},
        {[](Store& s) {
             s.AddOrder({orderList({{u"Hash", u"(absent)"}, {u"OrderNumber", u"x"}})});
         },
         91, "Quill1XML", "Object variable or With block variable not set: the attribute Hash is missing"},
        {[](Store& s) {
             s.AddOrder({orderList({{u"Picked", u"2024-02-30"}, {u"EMailAddress", u"(absent)"}})});
         },
         13, "Quill1XML", "Type mismatch: a date is written yyyy-MM-dd or yyyy-MM-ddThh:mm:ss, without a zone"},
        {[](Store& s) {
             s.AddOrder({orderList({{u"BudgetPeriod", u"40000"}, {u"PurchaseNumber", u"(absent)"}})});
         },
         6, "Quill1XML", "Overflow"},
        {[](Store& s) {
             s.AddOrder({orderList({{u"ShippingCost", u""}})});
         },
         13, "Quill1XML", "Type mismatch: \"\" is not a number"},
        {[](Store& s) {
             s.AddOrder({orderList({})});
             s.AddOrder({u"no list"});
         },
         applicationError, "Quill1XML.Store.AddOrder()",
         "A new Order may not be added if an existing one is still unlocked."},
        {[](Store& s) { s.AddOrderLineItem({0}); }, applicationError, "Quill1XML.Store.AddOrderLineItem()",
         "The Line Number must be a positive integer."},
        {[](Store& s) { s.LockOrder(); }, applicationError, "Quill1XML.Store.LockOrder()",
         "No Order has been created, or the current Order has already been Locked."},
        {[](Store& s) {
             s.AddQuotation({quotationList({{u"DebtorID", u"(absent)"}})});
         },
         91, "Quill1XML", "Object variable or With block variable not set: the attribute DebtorID is missing"},
        {[](Store& s) {
             s.AddQuotation({quotationList({{u"QuoteNumber", u"-1"}})});
         },
         applicationError, "Quill1XML.Store.AddQuotation()", "The Quotation Number must be a positive integer."},
        {[](Store& s) {
             s.AddQuotation({quotationList({})});
             s.AddQuotation({quotationList({})});
         },
         applicationError, "Quill1XML.Store.AddOrder()",
         "A new Quote may not be added if an existing one is still unlocked."},
        {[](Store& s) { s.LockQuote(); }, applicationError, "Quill1XML.Store.LockQuoter()",
         "No Quote has been created, or the current Quote has already been Locked."},
    });
    testing::FakeEnvironment fake;
    Store store(fake.environment());
    try {
        store.AddOrder({noList});
        ADD_FAILURE() << "half a tag was taken for a list";
    } catch (const Error& error) {
        EXPECT_NE(error.number(), 0);
        EXPECT_FALSE(error.description().empty());
    }
}

TEST(Orders, UpdatesCarryOneDateAndTheEmptyPin) {
    const auto update = [](Text status, Text waybill) {
        return [=](Store& s) { s.UpdateOrder({1001, status, waybill}); };
    };
    expectWritten({
        {update(u"Dispatched", u"W<1>\t&"),
         R"(<Order OrderNumber="1001" DispatchedDate="2007-03-05T14:07:09" WaybillNumber="W&#60;1&#62;	&amp;" OrderStatus="Dispatched" CreditCardPinNumber=""></Order>)"},
        {update(u"DISPATCHED", notGiven),
         R"(<Order OrderNumber="1001" DispatchedDate="2007-03-05T14:07:09" CreditCardPinNumber=""></Order>)"},
        {update(u"OnHold", u""),
         R"(<Order OrderNumber="1001" WaybillNumber="" OrderStatus="OnHold" CreditCardPinNumber=""></Order>)"},
        {update(u"Order", notGiven), R"(<Order OrderNumber="1001" CreditCardPinNumber=""></Order>)"},
    });
    expectRefused({{[](Store& s) {
                        s.AddOrder({orderList({})});
                        s.UpdateOrder({1, u"Picked"});
                    },
                    applicationError, "Quill1XML.Store.AddOrder()",
                    "A new Order may not be added if an existing one is still unlocked."}});
}

TEST(Quotations, BeginWithALineBreak) {
    EXPECT_EQ(lockedQuote({}), "\r\n<Quote QuoteNumber=\"1\"></Quote>");
    EXPECT_EQ(lockedQuote({{u"QuoteNumber", u"7"},
                           {u"QuoteDate", u"2008-03-15T14:05"},
                           {u"EMail", u"\u00E9"},
                           {u"ContactName", u"\u00EB"},
                           {u"ContactNumber", u"1"},
                           {u"ContactNumber2", u"2"},
                           {u"AddressLine1", u"1"},
                           {u"AddressLine4", u"4"},
                           {u"City", u"\u00F6"},
                           {u"PostalCode", u"P"},
                           {u"StateProvince", u"S"},
                           {u"CountryCode", u"ZA"},
                           {u"NearestPort", u"Port"},
                           {u"NearestAirport", u"Air"},
                           {u"QuoteCurrency", u"Rand"},
                           {u"DeliveryMethod", u"Sea"},
                           {u"AdditionalInfo", u"\u00FC"},
                           {u"DebtorID", u"D"},
                           {u"BlnExported", u"1"}}),
              "\r\n<Quote QuoteNumber=\"7\" QuoteDate=\"2008-03-15T14:05:00\" EMailAddress=\"&#233;\" "
              "ContactName=\"&#235;\" ContactNumber=\"1\" ContactNumber2=\"2\" AddressLine1=\"1\" AddressLine4=\"4\" "
              "City=\"&#246;\" PostalCode=\"P\" StateProvince=\"S\" CountryCode=\"ZA\" AdditionalInfo=\"&#252;\" "
              "NearestPort=\"Port\" NearestAirport=\"Air\" Currency=\"Rand\" DeliveryMethod=\"Sea\" DebtorID=\"D\" "
              "Exported=\"1\"></Quote>");
    const std::u16string x100(100, u'x');
    const std::u16string x101(101, u'x');
    EXPECT_EQ(testing::writtenBy([&](Store& s) {
                  s.AddQuotation({quotationList({})});
                  s.AddQuoteLineItem({u"A&B", 0, x100});
                  s.AddQuoteLineItem({u"", -1, x101});
                  s.LockQuote();
              }),
              "\r\n<Quote QuoteNumber=\"1\">\r\n<QuoteLineItem SKU=\"A&amp;B\" Quantity=\"0\" Description=\"" +
                  std::string(100, 'x') + "\"/>\r\n<QuoteLineItem/></Quote>");
}

TEST(ExternalOrders, StayOpenUntilTheyAreLocked) {
    testing::FakeEnvironment fake;
    Store store(fake.environment());
    EXPECT_THROW(store.AddExternalOrder({u""}), Error);
    fake.files->full = true;
    EXPECT_THROW(store.AddExternalOrder({u"123456789012345678901"}), Error);
    fake.files->full = false;
    EXPECT_THROW(store.AddExternalOrder({u"2"}), Error);
    EXPECT_EQ(utf8(fake.log->entries.back()).find("Error Description: A new External Order may not be added if an"),
              utf8(fake.log->entries.back()).find("Error Description: "));
    EXPECT_THROW(store.AddExternalOrderLineItem({1}), Error);  // the number is too long for lines
    EXPECT_TRUE(fake.log->entries.back().ends_with(u"Method: Quill1XML.Store.AddExternalOrder()"));
    store.LockExternalOrder();
    store.AddExternalOrder({u"2"});
    store.AddExternalOrderLineItem({1});
}

}  // namespace
}  // namespace quill1xml
