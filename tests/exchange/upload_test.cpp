// Sending as data: the packets on disk, what is posted for them, the server's answers, and what is left afterwards.
#include "quill1xml/store.hpp"
#include "support/expect_error.hpp"
#include "support/scripted_xml.hpp"

#include <gmock/gmock.h>

#include <functional>
#include <sstream>

namespace quill1xml {
namespace {

using ::testing::ElementsAre;
using testing::errorOf;
using testing::expectError;
using ::testing::IsEmpty;
using testing::labels;
using testing::ScriptedEnvironment;
using testing::utf8;

using FileTexts = std::map<std::u16string, std::u16string>;

std::string accepted(int number) {
    return "<Receipt ImportNumber=\"" + std::to_string(number) +
           "\"><Error Number=\"0\" Source=\"\" Description=\"\"/></Receipt>";
}

/// What every packet but the first begins with.
const std::string head =
    "<Store xmlns=\"WebStore\" StoreID=\"57\">\r\n<Envelope DateCreated=\"2007-03-05T14:07:09\" UserName=\"u\" "
    "Password=\"p\" DestinationURL=\"http://shop/a\" VersionNumber=\"2.0.00\"/>";

class Upload : public ::testing::Test {
protected:
    Upload() {
        store_.SetTempFilePath({u"T"});
        store_.Create({u"schema", 57});
        store_.AddEnvelope({u"u", u"p", u"http://shop/a"});
        put({});
        store_.onPacketUploaded([this](Text name, Long number) {
            events_.push_back(utf8(name) + " " + std::to_string(number) + " after " +
                              std::to_string(fake_.http->requests.size()));
        });
    }

    /// Replaces the packet files; names go without folder, "WebStore" and ".tmp".
    void put(const std::map<std::u16string, std::u16string>& packets) {
        fake_.files->texts.clear();
        for (const auto& [name, text] : packets) fake_.files->texts[u"T\\WebStore" + name + u".tmp"] = text;
    }

    std::vector<std::string> bodies() const {
        std::vector<std::string> bodies;
        for (const auto& request : fake_.http->requests) bodies.push_back(request.body);
        return bodies;
    }

    ScriptedEnvironment fake_;
    Store store_{fake_.environment()};
    std::vector<std::string> events_;
};

TEST_F(Upload, PostsEachPacketAndReportsIt) {
    put({{u"1", u"<Store StoreID=\"57\" ><Envelope DestinationURL=\"http://shop/b\"/>"},
         {u"2", u"<Tax TaxCode=\"\u0416\"/>"},
         {u"Tax1", u" \r\n \n"},
         {u"Tax2", u" <Tax TaxCode=\"A\"/>\r\n"},
         {u"Tax4", u"<Tax TaxCode=\"behind a gap\"/>"},
         {u"TaxA1", u"<TaxA/>"},
         {u"Currency1", u""}});
    fake_.files->texts[u"T\\Other1.tmp"] = u"x";
    for (const int number : {12, -3, 2147483647}) fake_.http->reply(accepted(number));

    const PendingPackets pending = store_.pendingPackets();
    EXPECT_THAT(pending.toSend, ElementsAre(u"WebStore1.tmp", u"WebStore2.tmp", u"WebStoreTax1.tmp",
                                            u"WebStoreTax2.tmp", u"WebStoreCurrency1.tmp"));
    EXPECT_THAT(pending.toDeleteUnsent, ElementsAre(u"WebStoreTax4.tmp", u"WebStoreTaxA1.tmp"));

    EXPECT_EQ(utf8(store_.Send({.strArchivePath = u"D:\\out"})),
              "WebStore1.tmp 12,WebStore2.tmp -3,WebStoreTax2.tmp 2147483647");
    EXPECT_THAT(events_, ElementsAre("WebStore1.tmp 12 after 1", "WebStore2.tmp -3 after 2",
                                     "WebStoreTax2.tmp 2147483647 after 3"));
    const std::string main = "<Store StoreID=\"57\" ><Envelope DestinationURL=\"http://shop/b\"/></Store>";
    const std::string second = head + "\r\n<Tax TaxCode=\"\u0416\"/></Store>";
    EXPECT_THAT(bodies(), ElementsAre(main, second, head + "\r\n <Tax TaxCode=\"A\"/>\r\n</Store>"));
    EXPECT_EQ(fake_.http->requests[0].url, u"http://shop/b");
    EXPECT_EQ(fake_.http->requests[1].url, u"http://shop/a");
    EXPECT_EQ(fake_.http->requests[0].contentType, "application/x-www-form-urlencoded");
    EXPECT_EQ(fake_.xml->saved.size(), 3u);
    EXPECT_EQ(utf8(fake_.xml->saved[u"D:\\out\\WebStore57-12.xml"]), main);
    EXPECT_EQ(utf8(fake_.xml->saved[u"D:\\out\\WebStore57--3.xml"]), second);
    EXPECT_EQ(fake_.files->texts, (FileTexts{{u"T\\Other1.tmp", u"x"}}));
    EXPECT_THAT(fake_.log->entries, IsEmpty());
    EXPECT_EQ(store_.LastFailure(), u"");
    EXPECT_EQ(fake_.xml->compiles, 1) << "for the first post, which had a schema";
    EXPECT_THAT(fake_.files->flushed, ElementsAre(u"T\\WebStore1.tmp", u"T\\WebStore2.tmp", u"T\\WebStoreTax2.tmp"));
}

TEST_F(Upload, GoesThroughTheKindsInOneOrder) {
    std::istringstream kinds(
        "Tax Currency TradingCountry SimpleCourier SimpleCourierZone SimpleCourierRate LocalCourier "
        "LocalCourierService InternationalCourier InternationalCourierService InternationalCourierRate "
        "InternationalCourierZone ProductType ProductGroup ProductCategory Product ProductLinking ProductPOSRebate "
        "ProductCategoryLink DebtorCategoryLink DimensionTypes Dimensions DimensionValues DimensionProducts SalesRep "
        "MailTo DebtorCategory Debtor DebtorStaff DebtorOpenItem DebtorPrice DiscountMatrix TavDiscountMatrix "
        "DebtorDiscountMatrix ProductDiscountMatrix ProductDiscountPrice PaymentMethod Message Order57_ Supplier "
        "GLAccount CashFlow OpenItemHeaderLayout OpenItemHeader OpenItemDetailLayout OpenItemDetail ExternalOrder "
        "ExternalOrderLineItem DebtorProduct Ageing OrderDocument OrderStages OrderStageLink OrderDocumentLink "
        "CustomerBalanceDescriptions DebtorStatementHeader DebtorStatementLines TransactionHistoryHeader "
        "TransactionHistoryLines TransactionHistory TransactionHistoryLink UserDefinedField TransactionDocumentLink "
        "PaymentOption MobileUser");
    std::map<std::u16string, std::u16string> packets{
        {u"Order5_1", u"<a/>"}, {u"Quote57_1", u"<a/>"}, {u"ProductImage1", u"<a/>"}};
    const std::size_t unsent = packets.size();
    std::string expected;
    int number = 0;
    for (std::string kind; kinds >> kind;) {
        packets[toUtf16(kind) + u"1"] = u"<a/>";
        fake_.http->reply(accepted(++number));
        expected += (number > 1 ? "," : "") + ("WebStore" + kind + "1.tmp ") + std::to_string(number);
    }
    put(packets);
    EXPECT_EQ(number, 65);
    EXPECT_EQ(store_.pendingPackets().toDeleteUnsent.size(), unsent);
    EXPECT_EQ(utf8(store_.Send()), expected);
    EXPECT_THAT(fake_.files->texts, IsEmpty());
}

TEST_F(Upload, OfOneKindAloneDeletesNothing) {
    put({{u"Quote57_1", u"<Quote/>"}, {u"Tax1", u"<Tax/>"}});
    const FileTexts before = fake_.files->texts;
    fake_.http->reply(accepted(5), 500);
    store_.SendTempFile({u"Quote57_", u"http://other"});
    EXPECT_EQ(fake_.http->requests.at(0).url, u"http://other");
    EXPECT_THAT(events_, ElementsAre("WebStoreQuote57_1.tmp 5 after 1"));
    EXPECT_EQ(fake_.files->texts, before);
    EXPECT_THAT(fake_.xml->saved, IsEmpty());
}

TEST_F(Upload, OfNothingSendsNothing) {
    put({{u"Tax1", u"<Tax/>"}});
    EXPECT_EQ(store_.Send({.strSource = u"FILE"}), u"");
    EXPECT_EQ(fake_.files->texts.size(), 1u) << "a source that is not known cleans nothing up";
    EXPECT_THAT(fake_.http->requests, IsEmpty());
}

TEST_F(Upload, EndsAtTheFirstFailureAndKeepsThePackets) {
    constexpr auto inSendFile = "Method: Quill1XML.Store.SendFile()";
    const struct {
        const char* receipt;
        int status;
        std::int32_t number;
        const char* source;
        const char* description;
    } cases[] = {
        {R"(<Receipt ImportNumber="3"><Error Number="17" Source="Stock" Description="No such tax"/></Receipt>)", 200,
         17, "Stock", "Server: No such tax"},
        {R"(<Receipt><Error Number="-2147221504" Source="" Description=""/></Receipt>)", 500, -2147221504, "",
         "Server: "},
        {"<html><p>Bad gateway</html>", 502, applicationError, "Quill1XML.Store.Send()",
         "Response XML failed to load."},
        {"<html><body/></html>", 500, 91, "Quill1XML", "Receipt"},
        {R"(<Receipt ImportNumber="3"/>)", 200, 91, "Quill1XML", "Error"},
        {R"(<Receipt ImportNumber="3"><Error/></Receipt>)", 200, 91, "Quill1XML", "Number"},
        {R"(<Receipt ImportNumber="3"><Error Number=""/></Receipt>)", 200, 13, "Quill1XML", "not a number"},
        {R"(<Receipt ImportNumber="3"><Error Number="2147483648"/></Receipt>)", 200, 6, "Quill1XML", "Overflow"},
        {R"(<Receipt><Error Number="0"/></Receipt>)", 200, 91, "Quill1XML", "ImportNumber"},
        {R"(<Receipt ImportNumber="3a"><Error Number="0"/></Receipt>)", 200, 13, "Quill1XML", "3a"},
        {nullptr, 0, 440, "Quill1XML", "no connection"},
    };
    put({{u"Tax1", u"<Tax/>"}, {u"Tax2", u"<Tax/>"}, {u"Currency1", u"<Currency/>"}});
    const FileTexts before = fake_.files->texts;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.receipt != nullptr ? c.receipt : "no connection");
        events_.clear();
        fake_.log->entries.clear();
        fake_.http->requests.clear();
        fake_.http->replies.clear();
        fake_.http->reply(accepted(1));
        if (c.receipt != nullptr) fake_.http->reply(c.receipt, c.status);
        const auto error = errorOf([&] { store_.Send({.strArchivePath = u"D:"}); });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->number(), c.number);
        EXPECT_EQ(utf8(error->source()), c.source);
        EXPECT_THAT(utf8(error->description()), ::testing::HasSubstr(c.description));
        EXPECT_EQ(fake_.http->requests.size(), 2u);
        const bool refused = error->description().starts_with(u"Server: ");
        EXPECT_EQ(utf8(store_.LastFailure()),
                  "WebStoreTax2.tmp: " + (refused || c.receipt == nullptr
                                              ? utf8(error->description())
                                              : "POST http://shop/a answered " + std::to_string(c.status) +
                                                    " text/xml: \"" + std::string(c.receipt).substr(0, 80) +
                                                    "\"; a receipt or a store document in XML was expected"));
        EXPECT_THAT(events_, ElementsAre("WebStoreTax1.tmp 1 after 1"));
        EXPECT_EQ(fake_.xml->saved.size(), 1u);
        EXPECT_EQ(fake_.files->texts, before);
        EXPECT_THAT(labels(*fake_.log), ElementsAre(inSendFile, "Method: Quill1XML.Store.SendTempFile()",
                                                    "Method: Quill1XML.Store.Send()"));
    }
}

TEST_F(Upload, EndsBeforeThePostWhenTheDocumentIsNoGood) {
    put({{u"1", u"<Store><Envelope/>"}});
    const FileTexts before = fake_.files->texts;
    const Text source = u"Quill1XML.Store.Send()";
    const auto withoutUrl = errorOf([&] { store_.Send(); });
    EXPECT_EQ(withoutUrl->number(), applicationError);
    EXPECT_EQ(withoutUrl->source(), source);
    EXPECT_EQ(withoutUrl->description(), u"No Destination URL has been specified.");
    put({{u"1", u"<Store>"}});
    expectError([&] { store_.Send(); }, 91, u"Store/Envelope");
    put({{u"1", u"<Store><Envelope></Store>"}});
    expectError([&] { store_.Send(); }, applicationError, u"Failed to load web store document XML.");
    put({{u"1", u"<Store><Envelope/>"}});
    fake_.xml->validateError.code = 1;
    expectError([&] { store_.Send({.strDestinationURL = u"http://shop"}); }, applicationError, u"not schema valid");
    EXPECT_THAT(labels(*fake_.log), ::testing::Contains("Method: Quill1XML.Store.Validate()"));
    EXPECT_TRUE(store_.LastFailure().starts_with(u"WebStore1.tmp: "));
    fake_.xml->validateError = {};
    fake_.files->full = true;
    expectError([&] { store_.Send({.strDestinationURL = u"http://shop"}); }, 61, u"T\\WebStore1.tmp");
    fake_.files->full = false;
    EXPECT_THAT(fake_.http->requests, IsEmpty());
    EXPECT_EQ(fake_.files->texts, before);

    fake_.http->reply(accepted(1));
    store_.onPacketUploaded([](Text, Long) { throw std::runtime_error("the host's own"); });
    expectError([&] { store_.Send({.strDestinationURL = u"http://shop"}); }, 51, u"the host's own");
    EXPECT_EQ(fake_.files->texts, before);
}

TEST_F(Upload, TellsWhereATornPacketBreaksOff) {
    const struct {
        Text kind;
        std::vector<std::u16string> records;
    } packets[] = {
        {u"Tax1", {u"<Tax TaxCode=\"A\"/>", u"<Tax TaxCode=\"B\" Description=\"c>d &amp; &#233;\" Rate=\" 15\"/>"}},
        {u"Order57_1",
         {u"<Order a=\"1\"><OrderLineItem b=\"/\"/></Order>",
          u"<Order a=\"2\"><UserDefinedFieldValue c=\"3\"/><OrderLineItem d=\"4\"/></Order>"}},
        {u"1", {u"<Store StoreID=\"57\" >", u"<Envelope DestinationURL=\"http://shop\"/>"}},
    };
    constexpr std::size_t unit = 2;  // in bytes, as the mark that a file begins with
    for (const auto& [kind, records] : packets) {
        const std::u16string text = records[0] + records[1];
        for (std::size_t size = 1; size < text.size(); ++size) {
            SCOPED_TRACE(utf8(text.substr(0, size)));
            put({{std::u16string(kind), text.substr(0, size)}});
            if (size != records[0].size()) {
                const std::size_t start = size < records[0].size() ? 0 : records[0].size();
                const auto error = errorOf([&] { store_.Send({.strDestinationURL = u"http://shop"}); });
                ASSERT_TRUE(error);
                EXPECT_EQ(error->number(), applicationError);
                EXPECT_EQ(error->source(), u"Quill1XML.Store.Load()");
                // What ends in a bracket could be a mistake of another kind.
                if (text[size - 1] == u'>' && kind != u"Order57_1") continue;
                EXPECT_THAT(utf8(error->description()),
                            ::testing::EndsWith(".\r\nThe last record of WebStore" + utf8(kind) +
                                                ".tmp is not all there. It starts at byte " +
                                                std::to_string(unit + unit * start) +
                                                ": cut the file off there and add the record again."));
            }
        }
    }
    // A power cut may leave null characters in the place of what was written last.
    const std::u16string whole = u"<Tax TaxCode=\"a>b\"/>";
    put({{u"Tax1", whole + std::u16string(3, u'\0')}});
    expectError([&] { store_.Send(); }, applicationError,
                u"It starts at byte " + toUtf16(std::to_string(unit + unit * whole.size())) + u": cut the file off");
    EXPECT_THAT(fake_.http->requests, IsEmpty());
    for (const Text other :
         {u"<Tax/><Tax a=\"1\" a=\"2\"/>", u"<Tax a=\"b\"c\"/>", u"<Tax/>&none;", u"x", u"<Tax/><b></a>"}) {
        put({{u"Tax1", std::u16string(other)}});
        const auto error = errorOf([&] { store_.Send(); });
        EXPECT_EQ(error->description().find(u"not all there"), std::u16string::npos) << utf8(other);
    }
}

TEST_F(Upload, OfADocumentFile) {
    put({{u"Tax1", u"<Tax/>"}});
    const std::u16string document = u"<Store StoreID=\"9\"><Envelope DestinationURL=\"http://f\"/></Store>";
    fake_.xml->files[u"d.xml"] = document;
    fake_.http->reply(accepted(8));
    EXPECT_EQ(store_.Send({.strSource = u"File",
                           .strWebStoreSource = u"d.xml",
                           .strWebStoreSchemaSource = u"newer",
                           .strArchivePath = u"D:"}),
              u"8");
    EXPECT_EQ(fake_.schemaFiles->schemas.back(), u"newer");
    EXPECT_THAT(bodies(), ElementsAre(utf8(document)));
    EXPECT_EQ(fake_.http->requests[0].url, u"http://f");
    EXPECT_THAT(fake_.xml->saved, IsEmpty());
    EXPECT_THAT(events_, IsEmpty());
    EXPECT_EQ(fake_.files->texts.size(), 1u);
    expectError([&] { store_.Send({.strSource = u"File"}); }, applicationError,
                u"There is no Web Store Source to load.");
    expectError([&] { store_.Send({.strSource = u"File", .strWebStoreSource = u"none"}); }, applicationError,
                u"Failed to load file because : ");
    EXPECT_EQ(fake_.http->requests.size(), 1u);
    EXPECT_EQ(fake_.schemaFiles->schemas.back(), u"newer") << "remembered when none is given";
}

TEST_F(Upload, WhatFailsNextIsNoFaultOfThePacketThatFailedBefore) {
    put({{u"Tax1", u"<Tax/>"}});
    expectError([&] { store_.Send(); }, 440, u"no connection");
    const std::u16string before = store_.LastFailure();
    EXPECT_TRUE(before.starts_with(u"WebStoreTax1.tmp: "));
    const std::u16string bare = before.substr(before.find(u": ") + 2);
    fake_.files->bytes[u"D\\a.gif"] = {'A'};
    expectError([&] { store_.SendImage({u"57", u"u", u"p", u"D", u"*.gif", 0, u"http://shop"}); }, 440, u"");
    EXPECT_EQ(utf8(store_.LastFailure()), utf8(bare));
    expectError([&] { store_.Send(); }, 440, u"");
    expectError([&] { store_.ReceiveOrders({57, u"u", u"p", u"http://shop"}); }, 440, u"");
    EXPECT_EQ(utf8(store_.LastFailure()), utf8(bare));
}

}  // namespace
}  // namespace quill1xml
