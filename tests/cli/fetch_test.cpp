// Fetching for people: tables, JSON, XML, and what is said of a failure.
#include "command_line/fetch.hpp"

#include "command_line/display_width.hpp"
#include "command_line/job.hpp"
#include "support/fake_environment.hpp"
#include "support/temp_folder.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>

namespace quill1xml::cli {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

struct Fetched {
    int status;
    std::string out;
    std::string err;
};

class FetchTest : public ::testing::Test {
protected:
    Fetched fetchKind(std::string_view kind, const std::string& reply, Format format, std::size_t width = 0) {
        options_.format = format;
        options_.width = width;
        fake_.http->reply(reply);
        std::ostringstream out;
        std::ostringstream err;
        const Download& download = *std::ranges::find(downloads(), kind, &Download::name);
        Progress progress(err, false);
        Exchanges exchanges(fake_.environment(), progress);
        const int status = fetch(exchanges, download, options_, out, err);
        return {status, out.str(), err.str()};
    }

    std::string table(std::string_view kind, const std::string& records, std::size_t width = 0) {
        const Fetched fetched = fetchKind(kind, "<Store>" + records + "</Store>", Format::table, width);
        EXPECT_EQ(fetched.status, 0) << fetched.err;
        EXPECT_EQ(fetched.err, "");
        return fetched.out;
    }

    testing::FakeEnvironment fake_;
    FetchOptions options_{.url = "http://shop", .store = 57, .user = "u", .password = "p", .email = "a@b"};
};

TEST_F(FetchTest, ShowsATableOfEachKind) {
    EXPECT_EQ(table("orders", R"(
<Order OrderNumber="7" OrderDate="2024-01-31T14:25:09" EMailAddress="a@b.ie" ShippingCity="Cork" OrderStatus="Ordered">
  <OrderLineItem LineNumber="1" Quantity="3" Price="0.1"/>
  <OrderLineItem LineNumber="2" Quantity="2"/>
  <OrderLineItem LineNumber="3" Price="9"/>
</Order>
<Order OrderNumber="12345" ShippingCity="千代田"><OrderLineItem LineNumber="1" Quantity="1"/></Order>
<Order OrderNumber="8"><OrderLineItem LineNumber="1" Quantity="2" Price="0.0625"/></Order>)"),
              R"(Number  Date              E-mail  City    Status   Lines  Total
     7  2024-01-31 14:25  a@b.ie  Cork    Ordered      3   0.30
 12345                            千代田               1
     8                                                 1  0.125

3 orders
)");
    EXPECT_EQ(table("customers", R"(
<DebtorStaff EMailAddress="x@y" Name="Bloom &amp;amp; Co&#10;&#x9B;2J" City="Κ&#x202E;ως" CountryCode="GRC" DebtorID="D1"/>)"),
              R"(E-mail  Name            City       Country  Debtor
x@y     Bloom & Co  2J  Κ\u202eως  GRC      D1

1 customer
)");
    EXPECT_EQ(table("quotations", R"(
<Quote QuoteNumber="5" QuoteDate="2024-02-29" ContactName="🌸 Zoë" QuoteCurrency="EUR"><QuoteLineItem SKU="A"/></Quote>
<Quote QuoteNumber="6" ContactName="Ann Onymous"/>)"),
              R"(Number  Date              Contact      Currency  Lines
     5  2024-02-29 00:00  🌸 Zoë       EUR           1
     6                    Ann Onymous                0

2 quotations
)");
    // The rows are products, whichever order they stand in.
    EXPECT_EQ(table("offline-products", R"(
<Order><OrderLineItem SKU="A" Description="Ink" Quantity="2" UnitOfMeasure="fl" Price="1234.5"/></Order><Order/>
<Order><OrderLineItem SKU="B-10"/></Order>)"),
              R"(SKU   Description  Quantity  Unit    Price
A     Ink                 2  fl    1234.50
B-10

2 products
)");
    EXPECT_EQ(table("orders", ""), "0 orders\n");
}

TEST_F(FetchTest, WarnsOfCardNumbersThatComeToStay) {
    options_.outputStays = true;
    EXPECT_THAT(fetchKind("orders", "<Store/>", Format::json).err, StartsWith("warning: orders may hold card numbers"));
    EXPECT_EQ(fetchKind("orders", "<Store/>", Format::table).err, "");
    EXPECT_EQ(fetchKind("quotations", "<Store/>", Format::json).err, "");
    // An archive keeps them whatever is shown.
    const testing::TempFolder folder;
    options_.outputStays = false;
    options_.archive = folder.path().string();
    const std::string reply = R"(<Store StoreID="57"><Envelope DateCreated="2024-01-31T14:25:00"/></Store>)";
    EXPECT_THAT(fetchKind("orders", reply, Format::table).err, HasSubstr("keep the archive " + options_.archive));
    EXPECT_EQ(fetchKind("customers", reply, Format::table).err, "");
}

TEST_F(FetchTest, AsksNobodyWhereTheArchiveCannotBeWritten) {
    const testing::TempFolder folder;
    options_.archive = (folder.path() / "none").string();
    const Fetched fetched = fetchKind("customers", "<Store/>", Format::xml);
    EXPECT_EQ(fetched.status, 1);
    EXPECT_EQ(fetched.out, "");
    EXPECT_THAT(fetched.err, StartsWith("fetch: error 76 (Quill1XML): Path not found: " + options_.archive));
    EXPECT_TRUE(fake_.http->requests.empty());
}

TEST_F(FetchTest, CutsTextsToTheTerminalButNothingElse) {
    const std::string records = R"(
<Order OrderNumber="1234567" OrderDate="2024-01-31T14:25:09" EMailAddress="a.very.long.name@example.com"
  ShippingCity="千代田区千代田" OrderStatus="Dispatched"/>)";
    EXPECT_EQ(table("orders", records, 72),
              R"( Number  Date              E-mail     City       Status     Lines  Total
1234567  2024-01-31 14:25  a.very.l…  千代田区…  Dispatch…      0

1 order
)");
    EXPECT_EQ(table("orders", records, 10),
              R"( Number  Date              E-mail  City  Status  Lines  Total
1234567  2024-01-31 14:25  a.ver…  千…   Dispa…      0

1 order
)");
}

TEST(DisplayWidth, CountsColumnsAndCutsBetweenCharacters) {
    const struct {
        Text text;
        std::size_t width;
        Text fittedTo4;
    } cases[] = {
        {u"abcde", 5, u"abc…"},
        {u"e\u0301a\u0300bc", 4, u"e\u0301a\u0300bc"},
        {u"日本語", 6, u"日…"},
        {u"한글", 4, u"한글"},
        {u"a🌸🎂", 5, u"a🌸…"},
        {u"𠀀", 2, u"𠀀"},
        {u"❤\uFE0F", 1, u"❤\uFE0F"},
        {u"\xD83C", 1, u"\xD83C"},
        {u"ที่นี่", 2, u"ที่นี่"},
        {u"हिन्दी", 3, u"हिन्दी"},
        {u"भुगतान विधि", 7, u"भुगता…"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(displayWidth(c.text), c.width) << testing::utf8(c.text);
        EXPECT_EQ(testing::utf8(fitted(c.text, 4)), testing::utf8(c.fittedTo4));
    }
}

TEST_F(FetchTest, WritesJsonWithNumbersDatesMarkersAndLinesOrXml) {
    const Fetched fetched = fetchKind("orders", R"(<Store>
<Order OrderNumber="7" OrderDate="2024-01-31T14:25:09" ShippingCity="Dún &amp;amp; Co" ShippingCost="6.9">
  <UserDefinedFieldValue FieldName="Carte" OrderNumber="7" FieldValue="🎂"/>
  <OrderLineItem LineNumber="1" Quantity="3" Price="0.1"/>
</Order><Order OrderNumber="8"/></Store>)",
                                      Format::json);
    EXPECT_EQ(fetched.status, 0) << fetched.err;
    EXPECT_THAT(fetched.out, HasSubstr("    \"OrderNumber\": 7,\n    \"OrderDate\": \"2024-01-31T14:25:09\",\n"));
    const auto orders = nlohmann::json::parse(fetched.out);
    ASSERT_EQ(orders.size(), 2U);
    EXPECT_EQ(orders[0]["ShippingCity"], "Dún & Co");
    EXPECT_EQ(orders[0]["ShippingCost"], 6.9);
    EXPECT_EQ(orders[0]["UDFs"],
              nlohmann::json::parse(R"([{"FieldName":"Carte","OrderNumber":"7","FieldValue":"🎂"}])"));
    EXPECT_EQ(orders[0]["LineItems"][0]["Price"], 0.1);
    EXPECT_EQ(orders[0]["LineItems"][0]["TaxAmount"], -1.0);
    EXPECT_EQ(orders[1]["OrderDate"], "1899-12-30T00:00:00");
    EXPECT_EQ(orders[1]["ShippingCity"], "");
    EXPECT_EQ(orders[1]["LineItems"], nlohmann::json::array());
    EXPECT_EQ(fetchKind("customers", "<Store/>", Format::json).out, "[]\n");
    EXPECT_EQ(fetchKind("quotations", R"(<Store StoreID="57"><Quote ContactName="Zoë"/></Store>)", Format::xml).out,
              "<Store StoreID=\"57\"><Quote ContactName=\"Zoë\"/></Store>\n");
}

TEST_F(FetchTest, AsksAsTheKindIsAskedForAndArchives) {
    const testing::TempFolder folder;
    options_.archive = folder.path().string();
    const std::string reply = R"(<Store StoreID="57"><Envelope DateCreated="2024-01-31T14:25:00"/></Store>)";
    const struct {
        const char* kind;
        const char* body;
    } cases[] = {
        {"orders", "StoreID=57&UserName=u&Password=p"},
        {"quotations", "StoreID=57&UserName=u&Password=p"},
        {"offline-products", "StoreID=57&CustomerEmailAddress=a@b"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.kind);
        EXPECT_EQ(fetchKind(c.kind, reply, Format::table).status, 0);
        EXPECT_EQ(testing::utf8(fake_.http->requests.back().url), "http://shop");
        EXPECT_EQ(fake_.http->requests.back().body, c.body);
        EXPECT_THAT(folder.bytes(u"WebStore57-20240131T142500.xml"), HasSubstr("<Envelope"));
        std::filesystem::remove(folder.path() / "WebStore57-20240131T142500.xml");
    }
}

TEST_F(FetchTest, NamesWhatFailed) {
    const std::string words(192, 'w');
    const std::string longRefusal =
        R"(<Receipt><Error Number="5" Source="A" Description=")" + words + R"(xy"/></Receipt>)";
    const std::string longMessage = "fetch: error 5 (A): Server: " + words + "…\n";
    const struct {
        const char* kind;
        const char* reply;
        Format format;
        const char* expected;
    } cases[] = {
        {"orders", R"(<Receipt><Error Number="5" Source="A&#x9B;" Description="B&#10;line 9: &#x2066;"/></Receipt>)",
         Format::table, "fetch: error 5 (A\\u009b): Server: B\\u000aline 9: \\u2066\n"},
        {"orders", longRefusal.c_str(), Format::table, longMessage.c_str()},
        {"orders", R"(<Store><Order OrderNumber="1"/><Order/></Store>)", Format::json,
         "fetch: error 91 (Quill1XML): Order 2 of 2, OrderNumber: Object variable or With block variable not set: the "
         "attribute OrderNumber is missing\n"},
        {"orders",
         R"(<Store><Order OrderNumber="1"><OrderLineItem LineNumber="1"/><OrderLineItem LineNumber="2" Price="&#13;&#10;line 9:&#10;"/></Order></Store>)",
         Format::json,
         "fetch: error 13 (Quill1XML): Order 1 of 1, OrderLineItem 2 of 2, Price: Type mismatch: \"\r\n    line "
         "9:\\u000a\""},
    };
    for (const auto& c : cases) {
        const Fetched fetched = fetchKind(c.kind, c.reply, c.format);
        EXPECT_EQ(fetched.status, 1) << c.expected;
        EXPECT_EQ(fetched.out, "") << c.expected;
        EXPECT_EQ(fetched.err.substr(0, std::string_view(c.expected).size()), c.expected);
    }
}

TEST_F(FetchTest, JobsPrintDocumentsAsText) {
    fake_.http->reply("<Store><Order/></Store>");
    std::istringstream in(
        R"({"ReceiveOrders":{"lngStoreID":1,"strUserName":"u","strPassword":"p","strSourceURL":"s","strReturnType":"XMLDOMDocument"}})");
    std::ostringstream out;
    Progress progress(out, false);
    Exchanges exchanges(fake_.environment(), progress);
    EXPECT_EQ(playJob(exchanges, {in, out, out}), 0);
    EXPECT_THAT(out.str(), StartsWith("{\"ReceiveOrders\":\"<Store><Order/></Store>"));
}

}  // namespace
}  // namespace quill1xml::cli
