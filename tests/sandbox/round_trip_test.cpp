// What is published comes back: logins and orders with awkward texts, sent to the sandbox and fetched again.
#include "automation/entity_classes.hpp"
#include "command_line/json_values.hpp"
#include "quill1xml/schema.hpp"
#include "quill1xml/store.hpp"
#include "sandbox/server.hpp"
#include "support/fake_environment.hpp"
#include "support/order_list.hpp"
#include "support/temp_folder.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace quill1xml {
namespace {

using nlohmann::ordered_json;
using testing::utf8;

/// Every character that is escaped, folded or given by its code, some that are not, and a reference that is only text.
const std::u16string awkward = u"&\"'<>\u00E9\u2013\u201C\u201D\u2018\u2019\u20AC\u00FF\u0416&#60;";

/// How texts change on their way: the dash and the curly quotes lose their form,
std::u16string folded(std::u16string text) {
    std::ranges::replace(text, u'\u2013', u'-');
    for (const char16_t c : {u'\u201C', u'\u201D'}) std::ranges::replace(text, c, u'"');
    for (const char16_t c : {u'\u2018', u'\u2019'}) std::ranges::replace(text, c, u'\'');
    return text;
}

/// or, where every character of codes 128 to 255 goes by its code, codes up to 159 stay what XML makes of them,
std::u16string byCode(std::u16string text) {
    const std::pair<char16_t, char16_t> codes[] = {{u'\u2013', u'-'},    {u'\u20AC', u'\x80'}, {u'\u2018', u'\x91'},
                                                   {u'\u2019', u'\x92'}, {u'\u201C', u'\x93'}, {u'\u201D', u'\x94'}};
    for (const auto& [from, to] : codes) std::ranges::replace(text, from, to);
    return text;
}

/// and decoded properties take a reference for the character it stands for.
std::u16string decoded(std::u16string text) {
    if (const std::size_t at = text.find(u"&#60;"); at != std::u16string::npos) text.replace(at, 5, u"<");
    return text;
}

struct Texts {
    const char* names;
    std::u16string given;
    std::u16string expected;
};

template <class Use>
void eachOf(const Texts& texts, Use use) {
    std::istringstream names(texts.names);
    for (std::string name; names >> name;) use(name);
}

std::u16string xmlEscaped(Text text) {
    std::u16string out;
    for (const char16_t c : text) {
        out += c == u'&' ? u"&amp;" : c == u'<' ? u"&lt;" : c == u'"' ? u"&quot;" : std::u16string(1, c);
    }
    return out;
}

class RoundTrip : public ::testing::Test {
protected:
    RoundTrip() {
        store_.SetTempFilePath({folder_.name(u"")});
        store_.Create({folder_.create(u"store.xsd", storeSchema(SchemaDialect::xsd)), 57});
        store_.AddAdditionalParameters();
        store_.AddEnvelope({u"demo", u"demo", url(u"/upload")});
    }

    std::u16string url(Text path) { return toUtf16(server_.url()) + std::u16string(path); }

    static ports::Environment environment() {
        setenv("no_proxy", "*", 1);
        ports::Environment environment = ports::systemEnvironment();
        environment.log = std::make_shared<testing::FakeLog>();
        return environment;
    }

    /// A collection as JSON: an array of all properties by name.
    template <class Item>
    static ordered_json json(Received<Item>&& received) {
        return cli::toJson(automation::toValue(std::get<std::vector<Item>>(std::move(received))));
    }

    testing::TempFolder folder_;
    sandbox::Server server_{{storeSchema(SchemaDialect::xsd), storeSchema(SchemaDialect::xdr), keyAttributes}, {}};
    Store store_{environment()};
};

/// All properties of a class: absent but for those given.
ordered_json record(const automation::Class& of, const ordered_json& given) {
    ordered_json record;
    for (const automation::Member& member : of.members.subspan(1)) {
        const std::string name(member.name);
        if (given.contains(name)) {
            record[name] = given[name];
        } else if (member.result == automation::ResultType::text) {
            record[name] = "";
        } else if (member.result == automation::ResultType::date) {
            record[name] = "1899-12-30T00:00:00";
        } else if (member.result == automation::ResultType::collection) {
            record[name] = ordered_json::array();
        } else {
            record[name] = -1;
        }
    }
    return record;
}

TEST_F(RoundTrip, LoginsComeBackAsCustomers) {
    const Texts all[] = {
        {"EMailAddress DebtorID Password Name AddressLine1 AddressLine2 AddressLine3 AddressLine4 City PostalCode "
         "StateProvince ContactNumber ContactNumber2 IDNumber ShippingContact ShippingAddressLine1 "
         "ShippingAddressLine2 ShippingAddressLine3 ShippingAddressLine4 ShippingCity ShippingStateProvince "
         "ShippingPostalCode ShippingContactNumber ShippingContactNumber2 PasswordHint LeisureLinkNumber TaxReference",
         awkward, decoded(folded(awkward))},
        {"CountryCode ShippingCountryCode", u"&\u00E9\u2013", u"&\u00E9-"},
    };
    const automation::Member& method = *automation::findMember(automation::storeClass(), "AddDebtorStaff");
    automation::Arguments arguments(method);
    ordered_json expected = {{"SendOrderProgressEmail", "1"}, {"CanSeeBalances", "0"}};
    for (const Texts& texts : all) {
        eachOf(texts, [&](const std::string& name) {
            const int parameter = automation::findParameter(method, "str" + name);
            ASSERT_GE(parameter, 0) << name;
            arguments.setText(static_cast<std::size_t>(parameter), texts.given);
            expected[name] = utf8(texts.expected);
        });
    }
    arguments.setWhole(static_cast<std::size_t>(automation::findParameter(method, "intBlnSendOrderProgressEmail")), 1);
    arguments.setWhole(static_cast<std::size_t>(automation::findParameter(method, "intBlnCanSeeBalances")), 0);
    method.invoke(&store_, arguments.data());
    store_.AddDebtorStaff({.strEMailAddress = u"a@b", .strDebtorID = u"D"});
    store_.Send();

    const auto& customer = automation::customerClass();
    EXPECT_EQ(json(store_.ReceiveCustomers({57, u"demo", u"demo", url(u"/customers")})),
              ordered_json::array(
                  {record(customer, expected), record(customer, {{"EMailAddress", "a@b"}, {"DebtorID", "D"}})}));
}

TEST_F(RoundTrip, OrdersComeBackWithTheirLinesAndFieldValues) {
    const Texts all[] = {
        {"EMailAddress ShippingContactName ShippingCity Message CollectionCity BillingContactName BillingCity", awkward,
         decoded(byCode(awkward))},
        {"ShippingContactNumber ShippingContactNumber2 ShippingAddressLine1 ShippingAddressLine2 ShippingAddressLine3 "
         "ShippingAddressLine4 ShippingPostalCode ShippingStateProvince ShippingStateProvinceName CourierCode "
         "CourierServiceCode DeliveryZone WaybillNumber CardType TransactionIndex BankReference Hash CollectionPoint "
         "CollectionAddressLine1 CollectionAddressLine2 CollectionAddressLine3 CollectionAddressLine4 "
         "CollectionPostalCode CollectionStateProvince DebtorID IDNumber ContactNumber ContactNumber2 "
         "BillingAddressLine1 BillingAddressLine2 BillingAddressLine3 BillingAddressLine4 BillingPostalCode "
         "BillingStateProvince BillingStateProvinceName BillingCountryCode PurchaseNumber CustomerCompanyName",
         awkward, decoded(folded(awkward))},
        {"CreditCardNumber", awkward, folded(awkward)},
        {"ShippingCountryCode CourierCountryCode CreditCardPinNumber DisplayCurrencyCode PaymentMethodID",
         u"&\u00E9\u2013", u"&\u00E9-"},
        {"CreditCardExpiry", u"&#60;\u20AC", u"&#60;\u20AC"},
        {"OrderStatus", u"Standing", u"Standing"},
        {"SessionID CollectionPointID", u"{6F9619FF-8B86-D011-B42D-00C04FC964FF}",
         u"6F9619FF-8B86-D011-B42D-00C04FC964FF"},
    };
    testing::Values values;
    std::istringstream given(
        "OrderNumber=2147483647 Order=2024-02-29T23:59:59 Confirmed=1899-12-29T06:00:00 Dispatched=9999-12-31 "
        "Cancelled=0100-01-01T00:00:01 Picked=2024-01-31T14:25 RequiredDelivery=2024-03-01 ShippingCost=0 "
        "ExclusiveShippingCost=0.1 OrderDiscountPercent=99.99 USDExchangeRate=1e-5 "
        "ShippingInsuranceCost=123456789012.345 WebsafeTransitCharge=1e20 WebsafeFraudCharge=12.5 "
        "BlnOnlinePaymentUsed=1 BudgetPeriod=32767 BlnExported=0");
    for (std::string name, value; std::getline(given >> std::ws, name, '=') && given >> value;) {
        values[toUtf16(name)] = toUtf16(value);
    }
    ordered_json expected = ordered_json::parse(R"({"OrderNumber": 2147483647, "OrderDate": "2024-02-29T23:59:59",
        "ConfirmedDate": "1899-12-29T06:00:00", "DispatchedDate": "9999-12-31T00:00:00",
        "CancelledDate": "0100-01-01T00:00:01", "PickedDate": "2024-01-31T14:25:00",
        "RequiredDeliveryDate": "2024-03-01T00:00:00", "ShippingCost": 0, "ExclusiveShippingCost": 0.1,
        "OrderDiscountPercent": 99.99, "USDExchangeRate": 1e-5, "ShippingInsuranceCost": 123456789012.345,
        "WebsafeTransitCharge": 1e20, "WebsafeFraudCharge": 12.5, "OnlinePaymentUsed": 1, "BudgetPeriod": 32767,
        "Exported": 0})");
    for (const Texts& texts : all) {
        eachOf(texts, [&](const std::string& name) {
            values[toUtf16(name)] = xmlEscaped(texts.given);
            expected[name] = utf8(texts.expected);
        });
    }
    store_.AddOrder({testing::orderList(values)});
    store_.AddOrderLineItem({.lngLineNumber = 1});
    store_.AddOrderUDFValue({2147483647, awkward, awkward});
    store_.AddOrderLineItem({7, awkward, 3, 2, 0.1, 0, 1e-7, 100, u"&\u00E9\u2013", awkward, 12.5, u"unused", u"2<",
                             u"3>", u"4&", awkward, 1234.5, 1});
    store_.AddOrderUDFValue({1, u"\u0416", u""});
    store_.LockOrder();
    store_.AddOrder({testing::orderList({{u"OrderNumber", u"1"}})});
    store_.LockOrder();
    store_.Send();

    const std::string plain = utf8(folded(awkward));
    expected["UDFs"] = {{{"FieldName", plain}, {"OrderNumber", "2147483647"}, {"FieldValue", plain}},
                        {{"FieldName", "\u0416"}, {"OrderNumber", "1"}, {"FieldValue", ""}}};
    const auto& line = automation::orderLineItemClass();
    ordered_json full = ordered_json::parse(R"({"LineNumber": 7, "Quantity": 3, "ActualQuantity": 2, "Price": 0.1,
        "PriceBeforeDebtorDiscount": 12.5, "HandlingCost": 0, "TaxAmount": 1e-7, "DiscountPercent": 100,
        "TaxCode": "&\u00E9-", "TaxCode2": "2<", "TaxCode3": "3>", "TaxCode4": "4&", "LineShippingAmount": 1234.5,
        "FreeCustomerShipping": 1})");
    full["SKU"] = full["UnitOfMeasure"] = plain;
    full["Description"] = utf8(decoded(byCode(awkward)));
    expected["LineItems"] = ordered_json::array({record(line, {{"LineNumber", 1}}), record(line, full)});
    const auto& order = automation::orderClass();
    EXPECT_EQ(json(store_.ReceiveOrders({57, u"demo", u"demo", url(u"/orders")})),
              ordered_json::array({record(order, expected), record(order, {{"OrderNumber", 1}})}));
    EXPECT_EQ(json(store_.ReceiveOfflineProductList({57, u"nobody", url(u"/offline-products")})),
              ordered_json::array());
}

}  // namespace
}  // namespace quill1xml
