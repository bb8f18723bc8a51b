// Every property of the downloaded records: which attribute it reads, how it takes it, and how it reports failures.
#include "automation/catalogue.hpp"
#include "support/expect_error.hpp"
#include "support/scripted_xml.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>

namespace quill1xml::automation {
namespace {

using testing::expectError;
using testing::utf8;

/// What a class promises, in interface order. A property alone is a decoded text. "=" marks a text as it stands, ":" a
/// number or date, "!" one that must be there, "@" the attribute's name and "~" the label's where they differ; "[]" is
/// a collection.
struct Promise {
    const Class& (*of)();
    const char* label;
    const char* properties;
};

const Promise promises[] = {
    {customerClass, "Customer",
     "EMailAddress DebtorID Password Name AddressLine1 AddressLine2 AddressLine3 AddressLine4 City PostalCode "
     "StateProvince CountryCode ContactNumber ContactNumber2 IDNumber ShippingContact ShippingAddressLine1 "
     "ShippingAddressLine2 ShippingAddressLine3 ShippingAddressLine4 ShippingCity ShippingStateProvince "
     "ShippingPostalCode ShippingCountryCode ShippingContactNumber ShippingContactNumber2 LastOrderDateTime "
     "SendOrderProgressEmail PasswordHint LeisureLinkNumber CanSeeBalances TaxReference"},
    {userDefinedFieldClass, "UserDefinedField", "FieldName=! OrderNumber= FieldValue="},
    {orderClass, "Order",
     "LineItems[] UDFs[] OrderNumber:long! OrderDate:date EMailAddress ShippingContactName ShippingContactNumber "
     "ShippingAddressLine1 ShippingAddressLine2 ShippingAddressLine3 ShippingAddressLine4 ShippingCity "
     "ShippingPostalCode ShippingStateProvince ShippingStateProvinceName ShippingCountryCode= CourierCountryCode= "
     "CourierCode CourierServiceCode DeliveryZone ExclusiveShippingCost:double ShippingCost:double ConfirmedDate:date "
     "DispatchedDate:date CancelledDate:date PickedDate:date WaybillNumber OrderStatus= PaymentMethodID "
     "PurchaseNumber CreditCardNumber= CreditCardExpiry= OnlinePaymentUsed:integer CardType TransactionIndex "
     "BankReference Hash OrderDiscountPercent:double RequiredDeliveryDate:date Message DisplayCurrencyCode "
     "USDExchangeRate:double ShippingInsuranceCost:double WebsafeTransitCharge:double WebsafeFraudCharge:double "
     "SessionID BudgetPeriod:integer CollectionPointID CollectionPoint CollectionAddressLine1 CollectionAddressLine2 "
     "CollectionAddressLine3 CollectionAddressLine4 CollectionCity CollectionPostalCode CollectionStateProvince "
     "DebtorID BillingContactName BillingAddressLine1 BillingAddressLine2 BillingAddressLine3 BillingAddressLine4 "
     "BillingCity BillingPostalCode BillingStateProvince BillingStateProvinceName BillingCountryCode "
     "CustomerCompanyName Exported:integer ShippingContactNumber2 ContactNumber2~BillingContactNumber2 ContactNumber "
     "IDNumber CreditCardPinNumber="},
    {orderLineItemClass, "OrderLineItem",
     "LineNumber:long! SKU= Quantity:long ActualQuantity:long Price:double PriceBeforeDebtorDiscount:double~Price "
     "HandlingCost:double TaxAmount:double DiscountPercent:double TaxCode= TaxCode2= TaxCode3= TaxCode4=~TaxCode3 "
     "Description UnitOfMeasure= LineShippingAmount:double "
     "FreeCustomerShipping:integer@CustomerFreeShipping~LineShippingInsurance"},
    {quotationClass, "Quotation",
     "LineItems[] QuoteNumber:long!~OrderNumber QuoteDate:date~OrderDate EMailAddress "
     "ContactName~ShippingContactName ContactNumber~ShippingContactNumber ContactNumber2~ShippingContactNumber2 "
     "AddressLine1~ShippingAddressLine1 AddressLine2~ShippingAddressLine2 AddressLine3 AddressLine4 "
     "City~ShippingCity PostalCode~ShippingPostalCode StateProvince~ShippingStateProvince "
     "CountryCode=~ShippingCountryCode AdditionalInfo NearestPort NearestAirport QuoteCurrency DeliveryMethod "
     "DebtorID Exported:integer"},
    {quotationLineItemClass, "QuoteLineItem", "SKU= Quantity:long Description"},
};

struct Property {
    std::string name;
    std::string attribute;
    std::string label;
    std::string type;  ///< empty for a decoded text
    bool required = false;
};

std::vector<Property> propertiesOf(const Promise& promise) {
    std::vector<Property> properties;
    std::istringstream rows(promise.properties);
    for (std::string row; rows >> row;) {
        // Takes what follows the mark off the end of the row.
        const auto cut = [&row](char mark) {
            const std::size_t at = std::min(row.find(mark), row.size());
            const std::string tail = at < row.size() ? row.substr(at + 1) : std::string();
            row.resize(at);
            return tail;
        };
        Property property;
        property.label = cut('~');
        property.attribute = cut('@');
        property.required = row.ends_with('!');
        if (property.required) row.pop_back();
        const std::string type = cut(':');
        property.type = row.ends_with('=') ? "=" : row.ends_with("[]") ? "[]" : type;
        property.name = row.substr(0, row.find_first_of("=["));
        if (property.label.empty()) property.label = property.name;
        if (property.attribute.empty()) property.attribute = property.name;
        properties.push_back(property);
    }
    return properties;
}

/// A value to tell the attributes of one element apart: as it stands in the document, and as the property returns it.
struct Sample {
    std::string xml;
    Value value;
};

Sample sampleOf(const Property& property, int number) {
    const std::string digits = std::to_string(number);
    if (property.type.empty()) return {"&amp;#39;" + digits, u"'" + toUtf16(digits)};
    if (property.type == "=") return {"&amp;#39;" + digits, u"&#39;" + toUtf16(digits)};
    if (property.type == "long") return {digits + "00000", Long{number * 100'000}};
    if (property.type == "integer") return {digits, static_cast<Integer>(number)};
    if (property.type == "double") return {digits + ".25", number + .25};
    return {"2024-01-31T14:25:" + std::to_string(100 + number % 60).substr(1),
            Date::of(2024, 1, 31, 14, 25, number % 60)};
}

Value absentOf(const Property& property) {
    if (property.type == "long") return Long{-1};
    if (property.type == "integer") return Integer{-1};
    if (property.type == "double") return Double{-1};
    if (property.type == "date") return Date{0};
    return std::u16string();
}

class Properties : public ::testing::TestWithParam<Promise> {
protected:
    /// A new object of the class, over the root of a document.
    std::shared_ptr<void> objectOver(const std::string& xml) {
        auto object = of_.create(fake_.environment());
        Arguments arguments(of_.members[0]);
        arguments.setNodes(0, {nodeOf(xml)});
        of_.members[0].invoke(object.get(), arguments.data());
        return object;
    }

    Node nodeOf(const std::string& xml) {
        ports::ParseError error;
        const auto document = fake_.environment().xml->parseBytes(std::string(xml), ports::SourceEncoding::utf8, error);
        if (document == nullptr) throw std::runtime_error(xml);
        return Node(document->root());
    }

    Value get(const std::shared_ptr<void>& object, const Property& property) {
        return findMember(of_, property.name)->invoke(object.get(), nullptr);
    }

    /// The scalar properties with their samples.
    std::vector<std::pair<Property, Sample>> samples() const {
        std::vector<std::pair<Property, Sample>> samples;
        for (const Property& property : propertiesOf(GetParam())) {
            if (property.type != "[]") samples.emplace_back(property, sampleOf(property, 1 + int(samples.size())));
        }
        return samples;
    }

    static bool same(const Value& a, const Value& b) {
        return a.index() == b.index() && std::visit(
                                             [&]<class T>(const T& value) {
                                                 if constexpr (std::equality_comparable<T>)
                                                     return value == std::get<T>(b);
                                                 return false;
                                             },
                                             a);
    }

    const Class& of_ = GetParam().of();
    testing::FakeEnvironment fake_;
};

TEST_P(Properties, StandInInterfaceOrderAfterInitialise) {
    std::vector<std::string> expected = {"Initialise"};
    for (const Property& property : propertiesOf(GetParam())) expected.push_back(property.name);
    std::vector<std::string> members;
    for (const Member& member : of_.members) {
        EXPECT_EQ(member.dispid, static_cast<Long>(members.size()) + 1);
        members.emplace_back(member.name);
    }
    EXPECT_EQ(members, expected);
}

TEST_P(Properties, ReadTheirOwnAttributeAndNoOther) {
    const auto all = samples();
    std::string attributes;
    for (const auto& [property, sample] : all) attributes += ' ' + property.attribute + "=\"" + sample.xml + '"';
    const auto full = objectOver("<x" + attributes + "/>");
    for (const auto& [property, sample] : all) {
        SCOPED_TRACE(property.name);
        EXPECT_TRUE(same(get(full, property), sample.value));

        // Without its attribute, and with one whose name differs in case only.
        const std::string own = ' ' + property.attribute + '=';
        std::string others = attributes;
        others.replace(others.find(own), own.size(), " _" + property.attribute + '=');
        std::string lower = property.attribute;
        std::ranges::transform(lower, lower.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
        const auto rest = objectOver("<x " + lower + "=\"7\"" + others + "/>");
        if (property.required) {
            expectError([&] { get(rest, property); }, 91, toUtf16(property.attribute));
        } else {
            EXPECT_TRUE(same(get(rest, property), absentOf(property)));
        }
    }
}

TEST_P(Properties, FailUnderTheirLabelsBeforeInitialise) {
    const auto object = of_.create(fake_.environment());
    for (const Property& property : propertiesOf(GetParam())) {
        fake_.log->entries.clear();
        expectError([&] { get(object, property); }, 91, u"Object variable or With block variable not set");
        EXPECT_EQ(testing::labels(*fake_.log),
                  std::vector{std::string("Method: Quill1XML.") + GetParam().label + '.' + property.label + ".Get"});
    }
}

TEST_P(Properties, FollowTheElementOfTheLastInitialise) {
    const auto [property, sample] = samples().front();
    const auto object = objectOver("<x/>");
    Arguments arguments(of_.members[0]);
    arguments.setNodes(0, {nodeOf("<y " + property.attribute + "='" + sample.xml + "'/>")});
    of_.members[0].invoke(object.get(), arguments.data());
    EXPECT_TRUE(same(get(object, property), sample.value));
}

INSTANTIATE_TEST_SUITE_P(Entities, Properties, ::testing::ValuesIn(promises),
                         [](const auto& promise) { return std::string(promise.param.of().name); });

}  // namespace
}  // namespace quill1xml::automation
