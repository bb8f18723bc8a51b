// The values of an order and of a quotation as structs.
#include "quill1xml/lists.hpp"

#include "quill1xml/store.hpp"
#include "support/fake_environment.hpp"

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

}  // namespace
}  // namespace quill1xml
