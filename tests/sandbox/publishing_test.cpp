#include "format.hpp"
#include "scenario.hpp"

#include <gmock/gmock.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <future>
#include <memory>
#include <stdexcept>

namespace quill1xml::sandbox {
namespace {

using ::testing::StartsWith;
using ::testing::ThrowsMessage;

std::string tax(const std::string& code) { return store("<Tax TaxCode=\"" + code + "\"/>"); }

const Scenario scenarios[] = {
    {"AnEmptyStoreHasNothingToShow",
     {
         {"GET /imports", "", 200, "[]"},
         {"GET /kinds", "", 200, "{}"},
         {"GET /records", "", 200, "[]"},
         {"GET /", "", 200, "<!DOCTYPE html>*Nothing has been published yet.*</html>\n"},
         {"GET /schema.xdr", "", 200, testFormat().xdr},
     }},
    {"ImportsAreNumberedAndKept",
     {
         {"POST /upload", "<?xml version=\"1.0\"?>" + store(""), 200, accepted(1)},
         {"POST /upload",
          "<w:Store xmlns:w='WebStore' StoreID='-5' Name='Ω'><w:Envelope UserName='demo' Password='demo'/><w:Tax "
          "TaxCode='B'/><w:Order/><w:Tax TaxCode='A'/></w:Store>",
          200, accepted(2)},
         {"GET /imports", "", 200,
          R"([{"import": 1, "time": "NOW", "storeId": 57, "user": "demo", "store": {"StoreID": "57"},
               "records": 0, "kinds": {}},
              {"import": 2, "time": "NOW", "storeId": -5, "user": "demo", "store": {"StoreID": "-5", "Name": "Ω"},
               "records": 3, "kinds": {"Tax": 2, "Order": 1}}])"},
         {"GET /kinds", "", 200, R"({"Tax": 2, "Order": 1})"},
     }},
    {"RecordsKeepTextKeysAndChildren",
     {
         {"POST /upload",
          store("<Tax TaxCode='VAT' CountryCode='DE' Description='&lt;Größe&gt; &quot;&#10;’Ж漢😀'/>\r\n"
                "<Order OrderNumber='7'>\r\n<OrderLineItem SKU='a|b'><Note>x&amp;y</Note></OrderLineItem></Order>") +
              "\r\n",
          200, accepted(1)},
         {"POST /upload", tax("VAT"), 200, accepted(2)},
         {"GET /records?kind=Tax", "", 200,
          R"([{"kind": "Tax", "key": "VAT|DE", "import": 1, "children": [],
               "attributes": {"TaxCode": "VAT", "CountryCode": "DE", "Description": "<Größe> \"\n’Ж漢😀"},
               "xml": "<Tax TaxCode=\"VAT\" CountryCode=\"DE\" Description=\"&lt;Größe&gt; &quot;&#10;’Ж漢😀\"/>"},
              {"kind": "Tax", "key": "VAT|", "import": 2, "children": [], "attributes": {"TaxCode": "VAT"},
               "xml": "<Tax TaxCode=\"VAT\"/>"}])"},
         {"GET /records?kind=Order&key=7", "", 200,
          R"([{"kind": "Order", "key": "7", "import": 1, "attributes": {"OrderNumber": "7"},
               "children": [{"element": "OrderLineItem", "attributes": {"SKU": "a|b"},
                             "children": [{"element": "Note", "attributes": {}, "children": []}]}],
               "xml": "<Order OrderNumber=\"7\">\n<OrderLineItem SKU=\"a|b\"><Note>x&amp;y</Note></OrderLineItem></Order>"
              }])"},
         {"GET /records?kind=Tax&key=VAT%7CDE%27%20OR%201", "", 200, "[]"},
     }},
    {"RefusalsSayWhyAndCostNoNumber",
     {
         {"POST /upload", "", 200, refused(1, "Import", "There is no document.")},
         {"POST /upload", store("<Tax"), 200, refused(1, "Import", "Line 1: *")},
         {"POST /upload", store("<Tax TaxCode='\xE4'/>"), 200, refused(1, "Import", "Line 1: *not proper UTF-8*")},
         {"POST /upload", "<!DOCTYPE Store [<!ENTITY a 'b'>]>" + tax("&a;"), 200,
          refused(1, "Import", "Document type declarations are not taken.")},
         {"POST /upload", "<Store xmlns='WebStore' StoreID='57'><Fax/></Store>", 200, wrongLogin},
         {"POST /upload", "<Store xmlns='WebStore'><Envelope UserName='demo' Password='Demo'/></Store>", 200,
          wrongLogin},
         {"POST /upload", "<Shop xmlns='WebStore'/>", 200,
          refused(2, "Import", "The root element is Shop in namespace WebStore, not Store in namespace WebStore.")},
         {"POST /upload", "<Store StoreID='1'/>", 200,
          refused(2, "Import", "The root element is Store without namespace, not Store in namespace WebStore.")},
         {"POST /upload", store("<Tax TaxCode='A'/>\n<Tax Rate='1'/><Fax/>"), 200,
          refused(3, "Schema", "Line 2: Element '{WebStore}Tax': *'TaxCode' is required but missing.")},
         {"POST /upload", store("<Tax TaxCode='A' Rate='&quot;&lt;'/>"), 200,
          refused(3, "Schema", "Line 1: *attribute 'Rate': '&quot;&lt;' is not a valid value*")},
         {"GET /records", "", 200, "[]"},
         {"POST /upload", tax("A"), 200, accepted(1)},
     }},
    {"SchemaHintsAreNeitherFollowedNorKept",
     {
         {"POST /upload",
          "<Store xmlns='WebStore' StoreID='1' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
          "xsi:schemaLocation='Other file:///nowhere.xsd'>" +
              std::string(sender) +
              "<Order xsi:schemaLocation='Other "
              "file:///nowhere.xsd'/></Store>",
          200, accepted(1)},
         {"GET /imports", "", 200,
          R"([{"import": 1, "time": "NOW", "storeId": 1, "user": "demo", "store": {"StoreID": "1"}, "records": 1,
               "kinds": {"Order": 1}}])"},
         {"GET /records", "", 200,
          R"([{"kind": "Order", "key": "", "import": 1, "attributes": {}, "children": [], "xml": "<Order/>"}])"},
     }},
    {"WhatIsNotThereAnswersJson",
     {
         {"GET /nothing", "", 404, R"({"error": "There is nothing at GET /nothing"})"},
         {"GET /upload", "", 404, R"({"error": "There is nothing at GET /upload"})"},
         {"GET /records?sort=key", "", 400, R"({"error": "Unknown parameter \"sort\""})"},
         {"POST /misbehave", "{", 400, R"({"error": "A JSON object is expected"})"},
         {"POST /misbehave", R"({"action": "explode"})", 400, R"({"error": "Unknown action \"explode\""})"},
         {"POST /misbehave", R"({"action": "refuse", "upload": 0})", 400,
          R"({"error": "upload must be an integer from 1 to 9223372036854775807"})"},
         {"POST /misbehave", R"({"action": "refuse", "number": 4294967296})", 400,
          R"({"error": "number must be an integer from -2147483648 to 2147483647"})"},
     }},
    {"MisbehaviourHappensWhenPlanned",
     {
         {"POST /misbehave", R"({"action": "refuse", "upload": 3})", 200, R"({"endpoint": "/upload", "upload": 3})"},
         {"POST /misbehave", R"({"action": "http-error", "status": 503, "upload": "next"})", 200,
          R"({"endpoint": "/upload", "upload": 1})"},
         {"POST /misbehave",
          R"({"action": "refuse", "number": -17, "source": "Im\"port", "description": "no <more> \u0001"})", 200,
          R"({"endpoint": "/upload", "upload": 2})"},
         {"POST /misbehave", R"({"action": "rubbish"})", 200, R"({"endpoint": "/upload", "upload": 4})"},
         {"POST /misbehave", R"({"action": "answer", "body": "<Receipt/>", "type": "a/b", "status": 201})", 200,
          R"({"endpoint": "/upload", "upload": 5})"},
         {"POST /misbehave", R"({"action": "http-error", "endpoint": "/orders"})", 200,
          R"({"endpoint": "/orders", "upload": 1})"},
         {"POST /orders", "", 500, "HTTP status 500 on purpose.\n"},
         {"POST /upload", tax("A"), 503, "HTTP status 503 on purpose.\n"},
         {"POST /upload", tax("A"), 200, refused(-17, "Im&quot;port", "no &lt;more&gt; ?")},
         {"POST /upload", tax("A"), 200, refused(1000, "Import", "Refused on purpose.")},
         {"POST /upload", tax("A"), 200, "<html><p>Rubbish & no XML"},
         {"POST /upload", tax("A"), 201, "<Receipt/>"},
         {"POST /upload", tax("A"), 200, accepted(1)},
     }},
};

class Publishing : public ::testing::TestWithParam<Scenario> {};

TEST_P(Publishing, Scenario) {
    Server server(testFormat(), {});
    play(server, GetParam().exchanges);
}

INSTANTIATE_TEST_SUITE_P(Sandbox, Publishing, ::testing::ValuesIn(scenarios),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

TEST(SandboxServer, TakesDocumentsOfAnyUsualSize) {
    Server server(testFormat(), {});
    std::string content;
    for (int i = 0; i < 5'000; ++i) content += "<Tax TaxCode='" + std::to_string(i) + "' Description='Größe'/>";
    play(server, {{"POST /upload", store(content), 200, accepted(1)}, {"GET /kinds", "", 200, R"({"Tax": 5000})"}});
}

/// A file that goes with the test.
class TemporaryFile {
public:
    explicit TemporaryFile(const char* name)
        : path_(::testing::TempDir() + "sandbox-" + std::to_string(getpid()) + '-' + name) {}
    ~TemporaryFile() { std::remove(path_.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

TEST(SandboxServer, KeepsItsDatabaseBetweenRuns) {
    const TemporaryFile file("kept.sqlite");
    for (int run = 1; run <= 2; ++run) {
        Server server(testFormat(), {.database = file.path()});
        play(server, {{"POST /upload", tax("A"), 200, accepted(run)},
                      {"GET /kinds", "", 200, "{\"Tax\": " + std::to_string(run) + '}'}});
    }
}

TEST(SandboxServer, RefusesDatabasesThatAreNotItsOwn) {
    for (const char* sql : {"CREATE TABLE records (id INTEGER)", "CREATE TABLE a (b INTEGER)", "PRAGMA user_version=1",
                            "PRAGMA user_version=3"}) {
        const TemporaryFile file("foreign.sqlite");
        SQLite::Database(file.path(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE).exec(sql);
        EXPECT_THAT([&] { Server(testFormat(), {.database = file.path()}); },
                    ThrowsMessage<std::runtime_error>(StartsWith("Database " + file.path() + ": ")));
    }
}

TEST(SandboxServer, KeepsNothingOfADocumentThatFailsHalfway) {
    const TemporaryFile file("failing.sqlite");
    Server server(testFormat(), {.database = file.path()});
    SQLite::Database(file.path(), SQLite::OPEN_READWRITE)
        .exec(
            "CREATE TRIGGER full BEFORE INSERT ON records WHEN new.key = 'B|' BEGIN SELECT RAISE(ABORT, 'disk full'); "
            "END");
    play(server, {{"POST /upload", store("<Tax TaxCode='A'/><Tax TaxCode='B'/>"), 200,
                   refused(51, "Store", "Database: disk full")},
                  {"GET /imports", "", 200, "[]"},
                  {"GET /records", "", 200, "[]"},
                  {"POST /upload", tax("A"), 200, accepted(1)}});
}

TEST(SandboxServer, ClosesAndHangsWithoutAnAnswer) {
    auto server = std::make_unique<Server>(
        testFormat(), Settings{.misbehaviours = {plannedFromOption("close", "1"), plannedFromOption("hang", "3")}});
    httplib::Client client("127.0.0.1", server->port());
    client.set_read_timeout(std::chrono::seconds(60));
    EXPECT_FALSE(client.Post("/upload", tax("A"), "text/xml"));
    play(*server, {{"POST /upload", tax("A"), 200, accepted(1)}});

    const auto start = std::chrono::steady_clock::now();
    auto hung = std::async(std::launch::async, [&client] { return client.Post("/upload", tax("A"), "text/xml"); });
    // Other clients are served meanwhile, until the server stops and lets the hung one go.
    EXPECT_EQ(hung.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    play(*server, {{"GET /kinds", "", 200, R"({"Tax": 1})"}});
    server.reset();
    EXPECT_FALSE(hung.get());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

TEST(SandboxServer, ServesAndStopsBesideIdleConnections) {
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::unique_ptr<httplib::Client>> idle;
    auto server = std::make_unique<Server>(testFormat(), Settings());
    for (int i = 0; i < 40; ++i) {
        idle.push_back(std::make_unique<httplib::Client>("127.0.0.1", server->port()));
        idle.back()->set_keep_alive(true);
        EXPECT_TRUE(idle.back()->Get("/kinds"));
    }
    server.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(SandboxServer, RefusesBodiesThatExpandBeyondItsLimit) {
    Server server(testFormat(), {});
    httplib::Client client("127.0.0.1", server.port());
    client.set_compress(true);
    EXPECT_EQ(client.Post("/upload", std::string(65u << 20, ' '), "text/xml").value().status, 413);
}

TEST(SandboxServer, ReportsAPortThatIsTakenAndABrokenSchema) {
    const Server server(testFormat(), {});
    EXPECT_THROW(Server(testFormat(), {.port = server.port()}), std::runtime_error);
    EXPECT_THROW(Server({.xsd = "<xs:schema/>", .xdr = "", .keyAttributes = nullptr}, {}), std::runtime_error);
}

TEST(SandboxMisbehaviour, OptionsNameEndpointRequestAndValue) {
    const PlannedMisbehaviour planned = plannedFromOption("refuse", "/images:2:17");
    EXPECT_EQ(planned.endpoint, "/images");
    EXPECT_EQ(planned.request, 2u);
    EXPECT_EQ(planned.misbehaviour.reply.body, refused(17, "Import", "Refused on purpose."));
    EXPECT_EQ(plannedFromOption("http-error", "4").misbehaviour.reply.status, 500);

    const std::pair<const char*, const char*> mistakes[] = {
        {"refuse", ""},        {"refuse", "0"},  {"refuse", "x"},        {"refuse", "1:"}, {"refuse", "1:2:3"},
        {"refuse", "/images"}, {"close", "1:2"}, {"http-error", "1:99"}, {"hang", "-1"},
    };
    for (const auto& [action, text] : mistakes)
        EXPECT_THROW(plannedFromOption(action, text), std::invalid_argument) << action << ' ' << text;
}

}  // namespace
}  // namespace quill1xml::sandbox
