// The values of an order and of a quotation as structs.
#include "quill1xml/lists.hpp"

#include "quill1xml/store.hpp"
#include "support/expect_error.hpp"
#include "support/fake_environment.hpp"
#include "support/order_list.hpp"

#include <gmock/gmock.h>

namespace quill1xml {
namespace {

using ::testing::ElementsAre;
using testing::FakeEnvironment;
using ::testing::HasSubstr;
using testing::utf8;

TEST(Lists, ArriveAsTheyWereGiven) {
    for (const char16_t* const separator : {u".", u","}) {
        FakeEnvironment fake;
        fake.system->separator = separator;
        Store first(fake.environment());
        first.SetTempFilePath({u"T"});
        first.SetStoreID({57});
        first.AddOrder({OrderList{.Order = Date::of(2007, 3, 5, 14, 7),
                                  .ShippingCity = u"\"A\" & <B>",
                                  .OrderNumber = 1001,
                                  .ShippingCost = 1234.5,
                                  .CustomerCompanyName = u"Coffee & Tea"}
                            .xml()});
        // A Store that moves takes the order along that is open.
        Store store(std::move(first));
        store.LockOrder();
        store.AddQuotation({QuotationList{.QuoteDate = Date::of(2007, 3, 5), .QuoteNumber = 7}.xml()});
        store.LockQuote();
        first = Store(fake.environment());
        first.SetTempFilePath({u"U"});
        first.AddTax({.strTaxCode = u"VAT"});
        ASSERT_EQ(fake.files->texts.size(), 3u);
        const std::string order = utf8(fake.files->texts[u"T\\WebStoreOrder57_1.tmp"]);
        const std::string parts[] = {"OrderNumber=\"1001\"", "OrderDate=\"2007-03-05T14:07:00\"",
                                     "ShippingCost=\"1234" + utf8(separator) + "5\"",
                                     "ShippingCity=\"&quot;A&quot; &amp; &#60;B&#62;\"",
                                     "CustomerCompanyName=\"Coffee &amp; Tea\""};
        for (const std::string& part : parts) EXPECT_THAT(order, HasSubstr(part));
        EXPECT_THAT(order, ::testing::Not(HasSubstr("ShippingCountryCode")));
    }
    EXPECT_EQ(utf8(OrderList{}.xml()).find("CustomerCompanyName"), std::string::npos);
}

TEST(Lists, AccountForAllThatIsWrongInThem) {
    const std::string longText(61, 'x');
    const std::string notANumber = ": Type mismatch: \"x\" is not a number";
    const struct {
        testing::Values values;
        std::int32_t number;  ///< of the first attribute that fails
        std::vector<std::string> account;
    } cases[] = {
        {{{u"ShippingCost", u"x"}}, 13, {"ShippingCost=\"x\"" + notANumber}},
        {{{u"ShippingCost", u"x"}, {u"USDExchangeRate", u"x"}},
         13,
         {"ShippingCost=\"x\"" + notANumber + "\r\n", "USDExchangeRate=\"x\"" + notANumber}},
        {{{u"DebtorID", u"(absent)"}},
         91,
         {"Object variable or With block variable not set: the attribute DebtorID is missing"}},
        {{{u"DebtorID", u"(absent)"}, {u"Hash", u"(absent)"}}, 91, {"missing in the list: ", "Hash, DebtorID"}},
        {{{u"DebtorID", u"(absent)"}, {u"ShippingCost", u"x"}},
         91,
         {"missing in the list: DebtorID\r\nShippingCost=\"x\"" + notANumber}},
        {{{u"OrderNumber", toUtf16(longText)}}, 13, {"OrderNumber=\"" + longText.substr(1) + "\": Type mismatch: "}},
    };
    FakeEnvironment fake;
    Store store(fake.environment());
    for (const auto& c : cases) {
        const auto error = testing::errorOf([&] { store.AddOrder({testing::orderList(c.values)}); });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->number(), c.number);
        for (const std::string& part : c.account) EXPECT_THAT(utf8(store.LastFailure()), HasSubstr(part));
    }
    // What was wrong with one list is not wrong with the next.
    store.AddOrder({testing::orderList({})});
    EXPECT_EQ(store.LastFailure(), u"");
    EXPECT_THROW(store.AddQuotation({testing::quotationList({{u"QuoteNumber", u"x"}})}), Error);
    EXPECT_THAT(utf8(store.LastFailure()), HasSubstr("QuoteNumber=\"x\""));
    store.AddQuotation({testing::quotationList({})});
    EXPECT_EQ(store.LastFailure(), u"");
}

TEST(Lists, ReadNumbersAsTheUserWritesThem) {
    FakeEnvironment fake;
    fake.system->separator = u",";
    Store store(fake.environment());
    store.AddOrder({testing::orderList({{u"ShippingCost", u"12,5"}, {u"USDExchangeRate", u"0,25"}})});
    store.LockOrder();
    ASSERT_EQ(fake.files->texts.size(), 1u);
    EXPECT_THAT(utf8(fake.files->texts.begin()->second),
                ::testing::AllOf(HasSubstr(" ShippingCost=\"12,5\""), HasSubstr(" USDExchangeRate=\"0,25\"")));
}

}  // namespace
}  // namespace quill1xml
