// Every property of the downloaded records: which attribute it reads, how it takes it, and how it reports failures.
#include "automation/classes.hpp"
#include "support/expect_error.hpp"
#include "support/scripted_xml.hpp"

#include <map>
#include <set>

namespace quill1xml::automation {
namespace {

using testing::expectError;
using Words = std::set<std::string>;
using OtherNames = std::map<std::string, std::string>;

/// Where a class departs from the usual: a property decodes its text, may do without its attribute, and its name is
/// that of the attribute and of the label.
struct Departures {
    const Class& (*of)();
    const char* label;
    const char* required;
    Words plain = {};
    OtherNames attributes = {};
    OtherNames labels = {};
};

const Departures classesOfRecords[] = {
    {customerClass, "Customer", ""},
    {userDefinedFieldClass, "UserDefinedField", "FieldName", {"FieldName", "OrderNumber", "FieldValue"}},
    {orderClass,
     "Order",
     "OrderNumber",
     {"ShippingCountryCode", "CourierCountryCode", "OrderStatus", "CreditCardNumber", "CreditCardExpiry",
      "CreditCardPinNumber"},
     {},
     {{"ContactNumber2", "BillingContactNumber2"}}},
    {orderLineItemClass,
     "OrderLineItem",
     "LineNumber",
     {"SKU", "TaxCode", "TaxCode2", "TaxCode3", "TaxCode4", "UnitOfMeasure"},
     {{"FreeCustomerShipping", "CustomerFreeShipping"}},
     {{"PriceBeforeDebtorDiscount", "Price"},
      {"TaxCode4", "TaxCode3"},
      {"FreeCustomerShipping", "LineShippingInsurance"}}},
    {quotationClass,
     "Quotation",
     "QuoteNumber",
     {"CountryCode"},
     {},
     {{"QuoteNumber", "OrderNumber"},
      {"QuoteDate", "OrderDate"},
      {"ContactName", "ShippingContactName"},
      {"ContactNumber", "ShippingContactNumber"},
      {"ContactNumber2", "ShippingContactNumber2"},
      {"AddressLine1", "ShippingAddressLine1"},
      {"AddressLine2", "ShippingAddressLine2"},
      {"City", "ShippingCity"},
      {"PostalCode", "ShippingPostalCode"},
      {"StateProvince", "ShippingStateProvince"},
      {"CountryCode", "ShippingCountryCode"}}},
    {quotationLineItemClass, "QuoteLineItem", "", {"SKU"}},
};

std::string nameIn(const OtherNames& names, const Member& property) {
    const auto found = names.find(std::string(property.name));
    return found == names.end() ? std::string(property.name) : found->second;
}

/// A value as it stands in the document, and as the property returns it; without text what stands for an absent one.
struct Sample {
    std::string text;
    Value value;
    Value absent;
};

Sample sampleOf(const Departures& c, const Member& property) {
    switch (property.result) {
        case ResultType::longInteger: return {"100000", Long{100'000}, Long{-1}};
        case ResultType::integer: return {"7", Integer{7}, Integer{-1}};
        case ResultType::floating: return {"7.25", 7.25, -1.0};
        case ResultType::date: return {"2024-01-31T14:25:07", Date::of(2024, 1, 31, 14, 25, 7), Date{}};
        default: break;
    }
    const bool plain = c.plain.contains(std::string(property.name));
    return {"&amp;#39;", plain ? u"&#39;" : u"'", u""};
}

bool same(const Value& a, const Value& b) {
    const auto equal = [&b]<class T>(const T& value) {
        if constexpr (std::equality_comparable<T>) return value == std::get<T>(b);
        return false;
    };
    return a.index() == b.index() && std::visit(equal, a);
}

void initialise(const Class& of, void* object, const std::string& xml) {
    ports::ParseError error;
    const auto document =
        ports::systemEnvironment().xml->parseBytes(std::string(xml), ports::SourceEncoding::utf8, error);
    Arguments arguments(of.members[0]);
    arguments.setNodes(0, {Node(document->root())});
    of.members[0].invoke(object, arguments.data());
}

TEST(Properties, ReadTheirOwnAttributeAndReportUnderTheirLabels) {
    testing::FakeEnvironment fake;
    for (const Departures& c : classesOfRecords) {
        const Class& of = c.of();
        const auto object = of.create(fake.environment());
        for (const Member& property : of.members.subspan(1)) {
            SCOPED_TRACE(std::string(of.name) + '.' + std::string(property.name));
            const auto unset = of.create(fake.environment());
            expectError([&] { property.invoke(unset.get(), nullptr); }, 91, u"Object variable or With block variable");
            EXPECT_EQ(testing::labels(*fake.log).back(),
                      std::string("Method: Quill1XML.") + c.label + '.' + nameIn(c.labels, property) + ".Get");
            if (property.result == ResultType::collection) continue;

            const std::string attribute = nameIn(c.attributes, property);
            const Sample sample = sampleOf(c, property);
            initialise(of, object.get(), "<x _" + attribute + "='1' " + attribute + "='" + sample.text + "'/>");
            EXPECT_TRUE(same(property.invoke(object.get(), nullptr), sample.value));
            initialise(of, object.get(), "<x _" + attribute + "='1' " + attribute + "_='1'/>");
            if (property.name == c.required) {
                expectError([&] { property.invoke(object.get(), nullptr); }, 91, toUtf16(attribute));
            } else {
                EXPECT_TRUE(same(property.invoke(object.get(), nullptr), sample.absent));
            }
        }
    }
}

}  // namespace
}  // namespace quill1xml::automation
