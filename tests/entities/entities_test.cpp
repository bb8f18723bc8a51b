// Downloaded records through their C++ classes: conversions, decoding, and the collections of their child elements.
#include "quill1xml/entities.hpp"
#include "quill1xml/store.hpp"

#include "quill1xml/store.hpp"
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

TEST_F(Entities, ValuesAreConvertedAsHostsDo) {
    const struct {
        const char* text;
        double price;
        Integer whole;  ///< halves to even
    } numbers[] = {{" +1,234.5 ", 1234.5, 1234}, {"13.5", 13.5, 14}, {"-1", -1, -1}};
    const auto line = [this](const std::string& text) {
        return over<OrderLineItem>("<x Quantity='" + text + "' CustomerFreeShipping='" + text + "' Price='" + text +
                                   "'/>");
    };
    for (const auto& c : numbers) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(line(c.text).Price(), c.price);
        EXPECT_EQ(line(c.text).Quantity(), c.whole);
        EXPECT_EQ(line(c.text).FreeCustomerShipping(), c.whole);
    }
    expectError([&] { line("32768").FreeCustomerShipping(); }, 6, u"");
    EXPECT_EQ(line("32768").Quantity(), 32768);
    expectError([&] { line("2147483647.5").Quantity(); }, 6, u"");
    expectError([&] { line("").Price(); }, 13, u"");
    expectError([&] { over<Order>("<x OrderDate='2024-02-30T10:00:00'/>").OrderDate(); }, 13, u"");
    expectError([&] { line("12,5").Price(); }, 13, u"");
    EXPECT_EQ(fake_.log->entries.size(), 5u);
    fake_.system->separator = u",";
    EXPECT_EQ(line("12,5").Price(), 12.5);
    const auto text = over<OrderLineItem>("<x SKU='&amp;amp;#60;' Description='&amp;amp;#60;'/>");
    EXPECT_EQ(text.SKU(), u"&amp;#60;");
    EXPECT_EQ(text.Description(), u"<");
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

/// A host whose objects cannot be made, and a list that cannot be walked.
struct Broken final : ports::Objects, NodeSource {
    std::vector<std::shared_ptr<void>> make(std::string_view, std::span<const Node>) override { fail(); }
    std::vector<Node> nodes() const override { fail(); }
    [[noreturn]] static void fail() { throw runtimeError(RuntimeError::cannotCreateObject); }
};

TEST_F(Entities, FailuresToMakeCollectionsAreReportedFromTheInsideOut) {
    auto environment = fake_.environment();
    const auto broken = std::make_shared<Broken>();
    environment.objects = broken;
    Store store(environment);
    const Order order(over<Order>("<x/>").node(), std::make_shared<const ports::Environment>(environment));
    const Quotation quotation(order.node(), order.environment());
    fake_.http->replies.assign(2, {200, "", "<Store/>"});
    struct Case {
        std::function<void()> call;
        const char* inner;
        const char* outer = nullptr;
    };
    const Case cases[] = {
        {[&] { order.LineItems(); }, "Order.OrderLineItems()", "Order.LineItems.Get"},
        {[&] { order.UDFs(); }, "Order.UserDefinedFields()", "Order.UDFs.Get"},
        {[&] { quotation.LineItems(); }, "Quotation.QuoteLineItems()", "Quotation.LineItems.Get"},
        {[&] {
             store.ReceiveOrders({1, u"", u"", u"http://s"});
         },
         "Store.Orders()", "Store.ReceiveOrders()"},
        {[&] {
             store.ReceiveQuotations({1, u"", u"", u"http://s"});
         },
         "Store.Quotes()", "Store.ReceiveQuotes()"},
        {[&] { store.Customers({NodeList(*broken)}); }, "Store.Customers()"},
    };
    for (const Case& c : cases) {
        fake_.log->entries.clear();
        expectError(c.call, 429, u"");
        std::vector<std::string> expected;
        for (const char* label : {c.inner, c.outer}) {
            if (label != nullptr) expected.push_back(std::string("Method: Quill1XML.") + label);
        }
        EXPECT_EQ(testing::labels(*fake_.log), expected);
    }
}

}  // namespace
}  // namespace quill1xml
