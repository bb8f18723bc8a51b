// Downloaded records through their C++ classes: conversions, decoding, and the collections of their child elements.
#include "quill1xml/entities.hpp"

#include "automation/catalogue.hpp"
#include "support/expect_error.hpp"
#include "support/scripted_xml.hpp"

#include <gmock/gmock.h>

#include <functional>

namespace quill1xml {
namespace {

using ::testing::ElementsAre;
using testing::expectError;
using ::testing::IsEmpty;
using testing::utf8;

class Entities : public ::testing::Test {
protected:
    /// An object over the root of a document, which nothing else keeps.
    template <class Item>
    Item over(const std::string& xml) {
        ports::ParseError error;
        const auto document = environment_->xml->parseBytes(std::string(xml), ports::SourceEncoding::utf8, error);
        if (document == nullptr) throw std::runtime_error(xml);
        return Item(Node(document->root()), environment_);
    }

    testing::FakeEnvironment fake_;
    std::shared_ptr<const ports::Environment> environment_ = std::make_shared<ports::Environment>(fake_.environment());
};

TEST_F(Entities, NumbersAreConvertedAsHostsDo) {
    const auto number = [this](const std::string& text, auto get) {
        return get(over<OrderLineItem>("<x Quantity='" + text + "' CustomerFreeShipping='" + text + "' Price='" + text +
                                       "'/>"));
    };
    const auto quantity = [](const OrderLineItem& line) -> double { return line.Quantity(); };
    const auto shipping = [](const OrderLineItem& line) -> double { return line.FreeCustomerShipping(); };
    const auto price = [](const OrderLineItem& line) { return line.Price(); };
    const struct {
        const char* text;
        double price;
        Integer whole;  ///< halves to even
    } numbers[] = {
        {"12.5", 12.5, 12},    {"13.5", 13.5, 14}, {"-0.5", -.5, 0},        {" 12 ", 12, 12}, {"+1,234", 1234, 1234},
        {"1.2e3", 1200, 1200}, {"-1", -1, -1},     {"32767", 32767, 32767}, {"0", 0, 0},      {".4", .4, 0}};
    for (const auto& c : numbers) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(number(c.text, price), c.price);
        EXPECT_EQ(number(c.text, quantity), c.whole);
        EXPECT_EQ(number(c.text, shipping), c.whole);
    }
    const struct {
        const char* text;
        int shipping;  ///< the error that 16 bits end in, 0 for none
        int quantity;
        int price;
    } failures[] = {{"", 13, 13, 13},         {"x", 13, 13, 13},     {"1x", 13, 13, 13},  {"1 2", 13, 13, 13},
                    {"32768", 6, 0, 0},       {"-32768.5", 0, 0, 0}, {"-32769", 6, 0, 0}, {"2147483647.5", 6, 6, 0},
                    {"-2147483649", 6, 6, 0}, {"1e309", 6, 6, 6},    {"-1e999", 6, 6, 6}};
    for (const auto& c : failures) {
        SCOPED_TRACE(c.text);
        const auto fails = [&](int expected, auto get) {
            fake_.log->entries.clear();
            if (expected != 0) {
                expectError([&] { number(c.text, get); }, expected, u"");
            } else {
                EXPECT_NO_THROW(number(c.text, get));
            }
            EXPECT_EQ(fake_.log->entries.size(), expected != 0 ? 1u : 0u);
        };
        fails(c.shipping, shipping);
        fails(c.quantity, quantity);
        fails(c.price, price);
    }
}

TEST_F(Entities, DatesAreCalendarTimesWithoutAZone) {
    const auto dated = [this](const std::string& text) {
        return over<Order>("<x OrderNumber='1' OrderDate='" + text + "'/>").OrderDate();
    };
    EXPECT_EQ(dated("2024-01-31T14:25:00"), Date::of(2024, 1, 31, 14, 25));
    EXPECT_EQ(dated("2024-02-29"), Date::of(2024, 2, 29));
    EXPECT_EQ(dated("1899-12-29T06:00"), Date{-1.25});
    EXPECT_EQ(dated("2024-01-31T14:25:09.25"), Date::of(2024, 1, 31, 14, 25, 9));
    for (const char* text :
         {"", "2024-02-30T10:00:00", "2023-02-29", "2024-01-31T24:00:00", "2024-01-31T10:60:00", "2024-01-31T10:00:00Z",
          "2024-01-31T10:00:00+02:00", "2024-01-31 10:00:00", "31.1.2024", "2024-1-31", " 2024-01-31", "45322"}) {
        SCOPED_TRACE(text);
        expectError([&] { dated(text); }, 13, u"");
    }
}

TEST_F(Entities, FreeTextIsDecodedAndCodesAreNot) {
    const struct {
        const char* xml;
        const char* plain;
        const char* decoded;
    } cases[] = {
        {"a &amp; b", "a & b", "a & b"},
        {"a &amp;amp; b", "a &amp; b", "a & b"},
        {"&amp;#39;&amp;apos;&amp;quot;&amp;#60;&amp;#62;&amp;#233;", "&#39;&apos;&quot;&#60;&#62;&#233;", "''\"<>é"},
        {"&amp;amp;#60;", "&amp;#60;", "<"},
        {"&amp;lt;&amp;gt;&amp;#128;&amp;#8364;&amp;#x3C;", "&lt;&gt;&#128;&#8364;&#x3C;",
         "&lt;&gt;&#128;&#8364;&#x3C;"},
        {"&#60;&lt;&#233;&#8364; Ж😀", "<<é€ Ж😀", "<<é€ Ж😀"},
        {"StringDefault", "StringDefault", "StringDefault"},
        {"", "", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.xml);
        const auto line = over<OrderLineItem>(std::string("<x SKU=\"") + c.xml + "\" Description=\"" + c.xml + "\"/>");
        EXPECT_EQ(utf8(line.SKU()), c.plain);
        EXPECT_EQ(utf8(line.Description()), c.decoded);
    }
}

const char* const twoOrders = R"(<Store xmlns="WebStore">
<Order OrderNumber="1">
  <OrderLineItem LineNumber="2"/>text<Other/>
  <UserDefinedFieldValue FieldName="b"/><!-- <OrderLineItem LineNumber="9"/> -->
  <Other><OrderLineItem LineNumber="8"/></Other>
  <OrderLineItem LineNumber="1"><OrderLineItem LineNumber="7"/></OrderLineItem>
  <UserDefinedFieldValue FieldName="a"/><orderlineitem LineNumber="6"/>
</Order>
<Order OrderNumber="2"><OrderLineItem LineNumber="3"/></Order>
<Order OrderNumber="3"/>
</Store>)";

TEST_F(Entities, CollectionsHoldTheOwnChildrenInDocumentOrder) {
    const auto orders = over<Entity>(twoOrders).node().children(u"Order");
    ASSERT_EQ(orders.size(), 3u);
    const auto lines = [&](std::size_t i) {
        std::vector<Long> numbers;
        for (const OrderLineItem& line : Order(orders[i], environment_).LineItems())
            numbers.push_back(line.LineNumber());
        return numbers;
    };
    EXPECT_THAT(lines(0), ElementsAre(2, 1));
    EXPECT_THAT(lines(1), ElementsAre(3));
    EXPECT_THAT(lines(2), IsEmpty());
    const auto fields = Order(orders[0], environment_).UDFs();
    ASSERT_EQ(fields.size(), 2u);
    EXPECT_EQ(fields[0].FieldName(), u"b");
    EXPECT_EQ(fields[1].FieldName(), u"a");
    EXPECT_THAT(Order(orders[2], environment_).UDFs(), IsEmpty());

    const auto quotation = over<Quotation>(
        "<Quote QuoteNumber='1'><QuoteLineItem SKU='&amp;#39;' Description='&amp;#39;'/><OrderLineItem/>"
        "<QuoteLineItem SKU='B'/></Quote>");
    const auto quoted = quotation.LineItems();
    ASSERT_EQ(quoted.size(), 2u);
    EXPECT_EQ(quoted[0].SKU(), u"&#39;");
    EXPECT_EQ(quoted[0].Description(), u"'");
    EXPECT_EQ(quoted[1].SKU(), u"B");
    EXPECT_THAT(over<Quotation>("<Quote/>").LineItems(), IsEmpty());
}

TEST_F(Entities, ItemsReportTheirFailuresWhereTheirOrderDoes) {
    const auto order = over<Order>("<Order><OrderLineItem Price='x'/></Order>");
    const auto line = order.LineItems().at(0);
    expectError([&] { line.Price(); }, 13, u"");
    expectError([&] { line.LineNumber(); }, 91, u"LineNumber");
    EXPECT_EQ(line.Quantity(), -1);
    EXPECT_THAT(testing::labels(*fake_.log), ElementsAre("Method: Quill1XML.OrderLineItem.Price.Get",
                                                         "Method: Quill1XML.OrderLineItem.LineNumber.Get"));
}

TEST_F(Entities, HostsGetCollectionsWithTheLabelsOfTheirBuilders) {
    using namespace automation;
    const auto collection = [&](const Class& of, const char* property, auto object) {
        return std::get<Collection>(findMember(of, property)->invoke(&object, nullptr));
    };
    const std::string lines = "<x><OrderLineItem/><QuoteLineItem/><UserDefinedFieldValue/></x>";
    const struct {
        Collection collection;
        const Class& itemClass;
        const char* label;
    } cases[] = {
        {collection(orderClass(), "LineItems", over<Order>(lines)), orderLineItemClass(),
         "Method: Quill1XML.Order.OrderLineItems()"},
        {collection(orderClass(), "UDFs", over<Order>(lines)), userDefinedFieldClass(),
         "Method: Quill1XML.Order.UserDefinedFields()"},
        {collection(quotationClass(), "LineItems", over<Quotation>(lines)), quotationLineItemClass(),
         "Method: Quill1XML.Quotation.QuoteLineItems()"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.collection.label, c.label);
        EXPECT_EQ(c.collection.itemClass, &c.itemClass);
        EXPECT_EQ(c.collection.nodes.size(), 1u);
    }
}

}  // namespace
}  // namespace quill1xml
