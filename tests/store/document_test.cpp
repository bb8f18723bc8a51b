// Complete documents around a packet, and what is told when one does not load.
#include "store/document.hpp"

#include "quill1xml/store.hpp"
#include "support/expect_error.hpp"
#include "support/scripted_xml.hpp"

#include <gmock/gmock.h>

namespace quill1xml {
namespace {

using ::testing::ElementsAre;
using testing::errorOf;
using testing::expectError;
using testing::labels;
using testing::ScriptedEnvironment;
using testing::utf8;

constexpr const char* load = "Method: Quill1XML.Store.Load()";
constexpr const char* validate = "Method: Quill1XML.Store.Validate()";
constexpr const char* xml = "Method: Quill1XML.Store.XML()";

TEST(Documents, AreWrappedAroundTheFirstPacketOfAKind) {
    ScriptedEnvironment fake;
    fake.files->texts = {{u"T\\WebStoreOrder7_1.tmp", u""},
                         {u"T\\WebStoreOrder70_1.tmp", u"<Order OrderID=\"1\"/>"},
                         {u"T\\WebStoreDebtorStaff7_1.tmp", u"<DebtorStaff a=\"1\"/><DebtorStaff/>"},
                         {u"T\\WebStoreQuote-1_1.tmp", u"<Quote/>"}};
    Store store(fake.environment());
    store.SetTempFilePath({u"T"});
    const auto document = [](const std::string& id, const std::string& body) {
        return "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n<Store xmlns=\"WebStore\" StoreID=\"" + id +
               "\">\r\n<Envelope DateCreated=\"2007-03-05T14:07:09\" UserName=\"u&amp;1\" Password=\"p&#60;2\"/>\r\n" +
               body + "</Store>";
    };
    EXPECT_EQ(utf8(store.XML({7, u"u&1", u"p<2", u"s1"})), document("7", ""));
    EXPECT_EQ(utf8(store.XML({70, u"u&1", u"p<2", u"s2"})), document("70", "<Order OrderID=\"1\"/>"));
    EXPECT_EQ(utf8(store.CustomerXML({7, u"u&1", u"p<2", u"s3"})),
              document("7", "<DebtorStaff a=\"1\"/><DebtorStaff/>"));
    fake.xml->validateError.code = 1;
    EXPECT_EQ(utf8(store.QuoteXML({-1, u"u&1", u"p<2", u"s4"})), document("-1", "<Quote/>"));
    EXPECT_THAT(fake.schemaFiles->schemas, ElementsAre(u"s1")) << "only the first is loaded and validated";

    expectError([&] { store.XML({8, u"u", u"p", u"s"}); }, 53, u"T\\WebStoreOrder8_1.tmp");
    store.Save({u"T\\saved.xml"});
    EXPECT_EQ(fake.files->texts.size(), 4u);
    EXPECT_TRUE(fake.xml->saved.empty());
}

TEST(Documents, ThatFailToLoadAreTried) {
    ScriptedEnvironment fake;
    fake.files->texts[u"T\\WebStoreOrder7_1.tmp"] = u"<Order>";
    Store store(fake.environment());
    store.SetTempFilePath({u"T"});
    expectError(
        [&] {
            store.XML({7, u"u", u"p", u"s"});
        },
        applicationError, u"Failed to load web store document XML.\r\nError Code: ");
    EXPECT_THAT(labels(*fake.log), ElementsAre(load, xml));
    fake.files->texts[u"T\\WebStoreOrder7_1.tmp"] = u"<Order/>";
    fake.xml->validateError.code = 5;
    expectError([&] { store.XML({7, u"u", u"p", u"s"}); }, applicationError, u"not schema valid.\r\nError Code: 5.");
    EXPECT_THAT(labels(*fake.log), ElementsAre(load, xml, validate, load, xml));
    // It has loaded all the same.
    EXPECT_NE(store.XML({7, u"u", u"p", u"s"}).find(u"<Order/>"), std::u16string::npos);
    expectError([&] { Store(fake.environment()).XML({7}); }, 53, u"WebStoreOrder7_1.tmp");
}

TEST(Documents, TellWhyTheyDoNotLoadOrAreNotValid) {
    ScriptedEnvironment fake;
    store::State state(fake.environment());
    state.schemaSource = u"s";
    const auto nothing = errorOf([&] { store::validate(state); });
    EXPECT_EQ(nothing->number(), -2147221504);
    EXPECT_EQ(nothing->source(), u"Quill1XML.Store.Validate()");
    EXPECT_EQ(nothing->description(), u"The document object has not yet been loaded. There is nothing to Validate.");

    const ports::ParseError error{-3, 10, 2, 4, u"why", u"<a", u"file.xml"};
    const auto loadText = [&] { store::loadText(state, {{u"<a/>"}}); };
    const auto loadFile = [&](Text name) { return [&state, name] { store::loadFile(state, name); }; };
    const auto failure = [&](const auto& loading) {
        const auto thrown = errorOf(loading);
        EXPECT_EQ(thrown->number(), -2147221504);
        return utf8(thrown->source()) + "|" + utf8(thrown->description());
    };
    fake.xml->parseError = error;
    EXPECT_EQ(failure(loadText),
              "Quill1XML.Store.Load()|Failed to load web store document XML.\r\nError Code: -3.\r\nReason: why.");
    EXPECT_EQ(failure(loadFile(u"f")),
              "Quill1XML.Store.Load()|Failed to load file because : \r\nError Code : -3.\r\nFile Position : 10.\r\n"
              "Line : 2.\r\nLine Position : 4.\r\nSource Text : <a.\r\nURL : file.xml.\r\nReason : why.");
    const std::pair<Text, const char*> quoted[] = {
        {u"<Envelope UserName=\"u\" Password=\"p<q\" A=\"Password\"/>",
         "<Envelope UserName=\"u\" Password=\"***\" A=\"Password\"/>"},
        {u"Password='p\" q", "Password='***"},
        {u"a Password = p'q/><b Password=''/>", "a Password = ***><b Password='***'/>"},
        {u"<e NoPassword=\"1\" Password=", "<e NoPassword=\"1\" Password=***"},
    };
    for (const auto& [source, shown] : quoted) {
        fake.xml->parseError.sourceText = source;
        EXPECT_NE(failure(loadFile(u"f")).find(std::string("Source Text : ") + shown + ".\r\nURL"), std::string::npos)
            << failure(loadFile(u"f"));
    }
    EXPECT_FALSE(state.documentLoaded);
    fake.xml->parseError = {};
    fake.xml->validateError = error;
    EXPECT_EQ(failure(loadText),
              "Quill1XML.Store.Validate()|The Web Store XML document is not schema valid.\r\nError Code: -3.\r\n"
              "File Position: 10.\r\nLine Number: 2.\r\nLine Position: 4.\r\nReason: why.\r\nSource Text: <a.\r\n"
              "URL: file.xml.");
    EXPECT_FALSE(state.schemaValid);
    fake.xml->validateError = {};
    loadText();
    EXPECT_TRUE(state.schemaValid);
    // A file name that is missing is told before a schema that is.
    state.schemaSource.clear();
    EXPECT_EQ(failure(loadFile({})), "Quill1XML.Store.Load()|There is no Web Store Source to load.");
    EXPECT_FALSE(state.schemaValid);
    expectError(loadText, 5, u"schema source");
}

TEST(Documents, CompileASchemaOnceWhileItStaysTheSame) {
    ScriptedEnvironment fake;
    store::State state(fake.environment());
    const auto loadText = [&] { store::loadText(state, {{u"<a/>"}}); };
    state.schemaSource = u"none";
    Bytes& file = fake.files->bytes[u"none"];
    file = {'<', 'a', '/', '>'};
    loadText();
    loadText();
    EXPECT_EQ(fake.xml->compiles, 1);
    file[1] = 'b';
    loadText();
    EXPECT_EQ(fake.xml->compiles, 2) << "it changed";
    const struct {
        std::optional<ports::FileVersion> version;
        bool read;
    } versions[] = {
        {{{.written = 1}}, true}, {{{.written = 1}}, false}, {{}, true},
        {{{.written = 1}}, true}, {{{.written = 2}}, true},
    };
    for (const auto& [version, read] : versions) {
        fake.files->fileVersion = version;
        const int before = fake.files->bytesRead;
        loadText();
        EXPECT_EQ(fake.files->bytesRead - before, read ? 1 : 0);
    }
    EXPECT_EQ(fake.xml->compiles, 2) << "other versions of the same";
    fake.files->fileVersion.reset();
    file.pop_back();
    expectError(loadText, applicationError, u"The schema none cannot be used");
    fake.files->bytes.clear();
    expectError(loadText, 53, u"none");

    state.schemaSource = u"http://host/s?secret";
    fake.http->replies = {
        {200, {}, "<a/>", {.entityTag = "1", .lastModified = {}}}, {304, {}, {}, {}}, {404, {}, {}, {}}};
    loadText();
    loadText();
    EXPECT_EQ(fake.xml->compiles, 3);
    EXPECT_EQ(fake.http->requests.at(1).body, "1") << "only asked whether it changed";
    expectError(loadText, 53, u"http://host/s (HTTP status 404)");

    // A server that gives nothing to tell its answer by is asked once for each sending.
    fake.http->replies = {{200, {}, "<b/>", {}}, {200, {}, "<b/>", {}}, {200, {}, "<c/>", {}}};
    {
        const store::SchemaSource::Sending sending(state.schema);
        loadText();
        loadText();
    }
    EXPECT_EQ(fake.http->replies.size(), 2u);
    loadText();
    EXPECT_EQ(fake.xml->compiles, 4);
    loadText();
    EXPECT_EQ(fake.xml->compiles, 5);
    EXPECT_TRUE(fake.http->replies.empty());
}

}  // namespace
}  // namespace quill1xml
