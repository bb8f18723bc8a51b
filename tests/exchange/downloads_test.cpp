// Downloads as data: what is posted, what comes back in each form, what is archived, and how each reply can fail.
#include "quill1xml/store.hpp"
#include "support/expect_error.hpp"
#include "support/scripted_xml.hpp"
#include "support/temp_folder.hpp"

#include <gmock/gmock.h>

#include <functional>
#include <optional>

namespace quill1xml {
namespace {

using ::testing::ElementsAre;
using testing::errorOf;
using testing::expectError;
using ::testing::IsEmpty;
using testing::utf8;

/// A result in any of its forms.
struct Fetched {
    std::optional<std::vector<std::string>> items = {};  ///< the keys of a collection
    std::optional<Document> document = {};
    std::optional<std::string> text = {};
};

std::string keyOf(const Customer& customer) { return utf8(customer.EMailAddress()); }
std::string keyOf(const Order& order) { return std::to_string(order.OrderNumber()); }
std::string keyOf(const Quotation& quotation) { return std::to_string(quotation.QuoteNumber()); }

template <class Item>
std::vector<std::string> keysOf(const std::vector<Item>& items) {
    std::vector<std::string> keys;
    for (const Item& item : items) keys.push_back(keyOf(item));
    return keys;
}

template <class Item>
Fetched fetched(Received<Item>&& received) {
    if (auto* items = std::get_if<std::vector<Item>>(&received)) return {.items = keysOf(*items)};
    if (auto* document = std::get_if<Document>(&received)) return {.document = *document};
    return {.text = utf8(std::get<std::u16string>(received))};
}

struct Method {
    const char* name;
    const char* label;  ///< in the source and in the log, without "Quill1XML.Store." and "()"
    const char* loadFailure;
    const char* body;
    const char* path;  ///< of the elements of a collection
    const char* key;   ///< the attribute that keysOf shows
    bool checksReceipt;
    std::function<Fetched(Store&, Text form, Text folder)> call;

    std::string source() const { return std::string("Quill1XML.Store.") + label + "()"; }
};

void PrintTo(const Method& method, std::ostream* out) { *out << method.name; }

const char* const login = "StoreID=-57&UserName=Zo\u00EB <1>&Password=p&w=%20";

const Method methods[] = {
    {"Customers", "ReceiveCustomers", "Store Customers XML failed to load.", login, "DebtorStaff", "EMailAddress", true,
     [](Store& store, Text form, Text folder) {
         return fetched(store.ReceiveCustomers({-57, u"Zo\u00EB <1>", u"p&w=%20", u"http://shop/a", form, folder}));
     }},
    {"Orders", "ReceiveOrders", "Store Order XML failed to load.", login, "Order", "OrderNumber", true,
     [](Store& store, Text form, Text folder) {
         return fetched(store.ReceiveOrders({-57, u"Zo\u00EB <1>", u"p&w=%20", u"http://shop/a", form, folder}));
     }},
    {"Quotations", "ReceiveQuotes", "Store Quote XML failed to load.", login, "Quote", "QuoteNumber", true,
     [](Store& store, Text form, Text folder) {
         return fetched(store.ReceiveQuotations({-57, u"Zo\u00EB <1>", u"p&w=%20", u"http://shop/a", form, folder}));
     }},
    {"OfflineProductList", "ReceiveOfflineProductList", "Offline Product List XML failed to load.",
     "StoreID=-57&CustomerEmailAddress=a+b@\u00E9&c", "Order", "OrderNumber", false,
     [](Store& store, Text form, Text folder) {
         return fetched(store.ReceiveOfflineProductList({-57, u"a+b@\u00E9&c", u"http://shop/a", form, folder}));
     }},
};

class Downloads : public ::testing::TestWithParam<Method> {
protected:
    Fetched receive(const std::string& reply, Text form = u"Collection", Text folder = {}) {
        fake_.http->reply(reply);
        return GetParam().call(store_, form, folder);
    }

    /// The failure of a download, which its method must report last, and only after the post.
    std::optional<Error> failure(const std::string& reply, Text form = u"Collection", Text folder = {}) {
        SCOPED_TRACE(reply.substr(0, 200));
        fake_.log->entries.clear();
        const auto error = errorOf([&] { receive(reply, form, folder); });
        const auto labels = testing::labels(*fake_.log);
        EXPECT_TRUE(!labels.empty() && labels.back() == "Method: " + GetParam().source());
        EXPECT_THAT(fake_.http->replies, IsEmpty());
        return error;
    }

    void expectFailure(const std::string& reply, std::int32_t number, const std::string& source,
                       const std::string& description) {
        const auto error = failure(reply);
        if (!error) return;
        EXPECT_EQ(error->number(), number) << reply.substr(0, 200);
        EXPECT_EQ(utf8(error->source()), source);
        EXPECT_EQ(utf8(error->description()), description);
    }

    std::string element(const std::string& key) const {
        return std::string("<") + GetParam().path + ' ' + GetParam().key + "=\"" + key + "\"/>";
    }

    std::vector<std::string> archived() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
            names.push_back(utf8(entry.path().filename().u16string()));
        return names;
    }

    testing::TempFolder folder_;
    const std::u16string folderName_ = folder_.name(u".").substr(0, folder_.name(u".").size() - 2);
    testing::FakeEnvironment fake_;
    Store store_{fake_.environment()};
};

/// A store document that can be archived, as "WebStore12-20240131T142500.xml".
std::string storeOf(const std::string& content) {
    return "<Store StoreID=\"12\"><Envelope DateCreated=\"2024-01-31T14:25:00\"/>" + content + "</Store>";
}

/// A document without line breaks and tabs: some parsers indent what they write.
std::string compact(std::string text) {
    std::erase_if(text, [](char c) { return c == '\r' || c == '\n' || c == '\t'; });
    return text;
}

TEST_P(Downloads, PostTheFormAndReturnWhatWasAskedFor) {
    const std::string reply =
        storeOf(element("7") + "<Tax/>" + element("3") + "<Other>" + element("9") + "</Other>" + element("7"));
    EXPECT_THAT(*receive(reply).items, ElementsAre("7", "3", "7"));
    ASSERT_EQ(fake_.http->requests.size(), 1u);
    EXPECT_EQ(fake_.http->requests[0].url, u"http://shop/a");
    EXPECT_EQ(fake_.http->requests[0].contentType, "application/x-www-form-urlencoded");
    EXPECT_EQ(fake_.http->requests[0].body, GetParam().body);

    const auto nodes = receive(reply, u"XMLDOMDocument").document->select(u"Store/" + toUtf16(GetParam().path));
    EXPECT_EQ(nodes.size(), 3u);
    EXPECT_EQ(compact(*receive(reply, u"XMLString").text), reply);
    const auto latin = receive("<?xml version='1.0' encoding='ISO-8859-1'?><Order x='\xE9'/>", u"XMLDOMDocument");
    EXPECT_EQ(latin.document->select(u"Order")[0].attribute(u"x"), u"\u00E9");
    EXPECT_THAT(archived(), IsEmpty());
    EXPECT_THAT(fake_.log->entries, IsEmpty());
}

TEST_P(Downloads, ReturnNothingWhereNoPathMatches) {
    for (const std::string& reply :
         {std::string("<Store/>"), "<Stores>" + element("1") + "</Stores>",
          "<a><Store>" + element("1") + "</Store></a>", std::string("<Receipt><Error Number=\" 0 \"/></Receipt>")}) {
        EXPECT_THAT(*receive(reply).items, IsEmpty()) << reply;
    }
    EXPECT_THAT(*receive("<Store xmlns='WebStore'>" + element("1") + "</Store>").items, ElementsAre("1"));
    EXPECT_THAT(*receive("<Store><x>" + element("1") + "</x>" + element("2") + "</Store>").items, ElementsAre("2"));
}

TEST_P(Downloads, RefuseWhatIsNoXml) {
    for (const std::string& reply : {std::string(), std::string("<html><p>Not found<br></html>"),
                                     storeOf(element("1")).substr(0, 80), "<Store>" + element("\xE9") + "</Stor>"}) {
        expectFailure(reply, applicationError, GetParam().source(), GetParam().loadFailure);
    }
}

TEST_P(Downloads, PassOnTheFailureOfTheConnection) {
    expectError([&] { GetParam().call(store_, u"Collection", folderName_); }, 440, u"no connection");
    EXPECT_THAT(testing::labels(*fake_.log), ElementsAre("Method: " + GetParam().source()));
    EXPECT_THAT(archived(), IsEmpty());
    fake_.http->reply("<Store>" + element("1") + "</Store>", 500);
    EXPECT_THAT(*GetParam().call(store_, u"Collection", {}).items, ElementsAre("1")) << "whatever the status";
}

TEST_P(Downloads, RaiseTheServersRefusal) {
    const struct {
        const char* receipt;
        int number;
        const char* description;
    } cases[] = {
        {"<Receipt><Error Number=\"5\" Source=\"Log&amp;in\" Description=\"Bad password\"/></Receipt>", 5,
         "Server: Bad password"},
        {"<Receipt><Error Number=\"-2147221504\" Source=\"Log&amp;in\" Description=\"\"/></Receipt>", applicationError,
         "Server: "},
        {"<Receipt/>", 91, nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.receipt);
        if (!GetParam().checksReceipt) {
            EXPECT_THAT(*receive(c.receipt).items, IsEmpty());
            EXPECT_EQ(failure(c.receipt, u"XMLString", folderName_)->number(), 91) << "there is nothing to name it by";
            continue;
        }
        const auto error = failure(c.receipt, u"XMLString", folderName_);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->number(), c.number);
        if (c.description != nullptr) {
            EXPECT_EQ(utf8(error->source()), "Log&in");
            EXPECT_EQ(utf8(error->description()), c.description);
        }
    }
    EXPECT_THAT(archived(), IsEmpty());
}

TEST_P(Downloads, ArchiveBeforeTheyLookAtTheForm) {
    const std::string reply = storeOf(element("1"));
    for (const Text form : {u"collection", u"", u"XMLDomDocument", u" XMLString"}) {
        const auto error = failure(reply, form, folderName_);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->number(), applicationError);
        EXPECT_EQ(utf8(error->source()), GetParam().source());
        EXPECT_EQ(error->description(), u"No valid Return Type has been passed.");
        ASSERT_THAT(archived(), ElementsAre("WebStore12-20240131T142500.xml"));
        EXPECT_THAT(compact(folder_.bytes(u"WebStore12-20240131T142500.xml")), ::testing::HasSubstr(reply));
        std::filesystem::remove(folder_.path() / "WebStore12-20240131T142500.xml");
    }
    EXPECT_THAT(*receive(reply, u"Collection", folderName_).items, ElementsAre("1"));
    EXPECT_EQ(archived().size(), 1u);
    EXPECT_EQ(failure(reply, u"Collection", folderName_ + u"\\none")->number(), 76);
}

INSTANTIATE_TEST_SUITE_P(Exchange, Downloads, ::testing::ValuesIn(methods),
                         [](const auto& method) { return std::string(method.param.name); });

class DownloadArchive : public Downloads {};

TEST_P(DownloadArchive, IsNamedByStoreAndDate) {
    const struct {
        const char* attributes;  ///< of Store and of Envelope, or no Envelope
        const char* envelope;
        const char* name;  ///< or the error's number
        int error;
    } cases[] = {
        {"StoreID=' -12 '", "DateCreated='2024-01-31T14:25:00'", "WebStore-12-20240131T142500.xml", 0},
        {"StoreID='1.2e1'", "DateCreated='31 January: 14-25'", "WebStore12-31 January 1425.xml", 0},
        {"StoreID='12'", "DateCreated=''", "WebStore12-.xml", 0},
        {"StoreID='12'", "DateCreated='x/../y'", nullptr, 75},
        {"StoreID='12'", "DateCreated='a\\b'", nullptr, 75},
        {"StoreID='12'", "DateCreated='.-./x'", nullptr, 75},
        {"StoreID='12'", "", nullptr, 91},
        {"StoreID='12'", nullptr, nullptr, 91},
        {"", "DateCreated='2024-01-31T14:25:00'", nullptr, 91},
        {"StoreID='x'", "DateCreated='2024-01-31T14:25:00'", nullptr, 13},
    };
    for (const auto& c : cases) {
        std::string reply = std::string("<Store ") + c.attributes + '>';
        if (c.envelope != nullptr) reply += std::string("<Envelope ") + c.envelope + "/>";
        reply += "</Store>";
        SCOPED_TRACE(reply);
        if (c.error != 0) {
            EXPECT_EQ(failure(reply, u"XMLString", folderName_)->number(), c.error);
            EXPECT_THAT(archived(), IsEmpty());
            continue;
        }
        receive(reply, u"XMLString", folderName_);
        ASSERT_THAT(archived(), ElementsAre(c.name));
        std::filesystem::remove(folder_.path() / c.name);
    }
}

INSTANTIATE_TEST_SUITE_P(Exchange, DownloadArchive, ::testing::Values(methods[1]));

TEST(NodeLists, BecomeCollectionsInTheirOrder) {
    testing::FakeEnvironment fake;
    Store store(fake.environment());
    fake.http->reply("<Store><Order OrderNumber='2'/><Order OrderNumber='1'/><Order OrderNumber='2'/><Tax/></Store>");
    const auto document = std::get<Document>(store.ReceiveOrders({1, u"u", u"p", u"http://shop", u"XMLDOMDocument"}));
    auto nodes = document.select(u"Store/Order");
    EXPECT_THAT(keysOf(store.Orders({nodes})), ElementsAre("2", "1", "2"));
    std::swap(nodes[0], nodes[1]);
    EXPECT_THAT(keysOf(store.Orders({nodes})), ElementsAre("1", "2", "2"));
    EXPECT_THAT(store.Orders({NodeList{}}), IsEmpty());

    // Elements of another kind, and nodes that are none, show at their properties only.
    const auto taxes = document.select(u"Store/Tax");
    EXPECT_EQ(store.Quotations({taxes}).at(0).ContactName(), u"");
    expectError([&] { store.Quotations({taxes}).at(0).QuoteNumber(); }, 91, u"QuoteNumber");
    const Node none[1];
    EXPECT_EQ(store.Customers({none}).size(), 1u);
    expectError([&] { store.Customers({none}).at(0).Name(); }, 91, u"");
}

}  // namespace
}  // namespace quill1xml
