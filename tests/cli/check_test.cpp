// Jobs with mistakes planted in them: each is found, with its line, and nothing else is.
#include "command_line/check.hpp"

#include "quill1xml/schema.hpp"
#include "support/order_list.hpp"
#include "support/temp_folder.hpp"
#include "support/text_printer.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace quill1xml::cli {
namespace {

using nlohmann::json;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using testing::TempFolder;
using testing::utf8;

/// A line of a job and the findings that belong to it, in any order.
struct Line {
    std::string text;
    std::vector<std::string> findings{};
};

std::string call(const char* method, const json& values) { return json{{method, values}}.dump(); }

std::string order(const testing::Values& values) {
    return call("AddOrder", {{"strXMLParameterList", utf8(testing::orderList(values))}});
}

class CheckTest : public ::testing::Test {
protected:
    struct Outcome {
        int status;
        std::string out;
    };

    Outcome check(const std::vector<Line>& lines, const CheckOptions& options = {}) {
        std::string job;
        for (const Line& line : lines) job += line.text + "\n";
        std::istringstream in(job);
        std::ostringstream out;
        std::ostringstream err;
        const int status = checkJob(ports::systemEnvironment(), {in, out, err}, options);
        EXPECT_EQ(err.str(), "");
        return {status, out.str()};
    }

    /// Expects the findings of the lines and no other.
    void expectFindings(const std::vector<Line>& lines) {
        std::istringstream out(check(lines).out);
        std::vector<std::string> found;
        for (std::string line; std::getline(out, line) && !line.starts_with("Kind ");) {
            if (line.starts_with("    ")) {
                found.back() += "\n" + line;
            } else {
                found.push_back(line);
            }
        }
        std::size_t number = 0;
        for (const Line& line : lines) {
            ++number;
            for (const std::string& expected : line.findings) {
                const std::string beginning = "line " + std::to_string(number) + ": " + expected;
                const auto same =
                    std::ranges::find_if(found, [&](const std::string& each) { return each.starts_with(beginning); });
                EXPECT_NE(same, found.end()) << beginning;
                if (same != found.end()) found.erase(same);
            }
        }
        EXPECT_THAT(found, IsEmpty());
    }

    std::string use(const TempFolder& folder) {
        return call("SetTempFilePath", {{"strTempFilePath", folder.path().string()}});
    }

    std::string create(const std::string& schema) {
        return call("Create", {{"strWebStoreSchemaSource", schema}, {"lngStoreID", 57}});
    }

    TempFolder folder_;
    TempFolder left_;
    std::string schema_ = utf8(left_.create(u"store.xsd", storeSchema(SchemaDialect::xsd)));
    std::string envelope_ =
        call("AddEnvelope", {{"strUserName", "u"}, {"strPassword", "p"}, {"strDestinationURL", "http://127.0.0.1:1/"}});
};

TEST_F(CheckTest, FindsEveryPlantedMistakeAndNothingElse) {
    ports::systemEnvironment().files->writeText(left_.name(u"WebStoreTax1.tmp"), u"<Tax TaxCode=\"A\" Rate=\" 1");
    const std::string tooLong(51, 'x');
    expectFindings({
        {use(folder_)},
        {R"({"SetPacketSize":{"lngPacketSize":2}})"},
        {create("no such schema.xsd"), {"warning: Create: the schema cannot be read: "}},
        {R"({"AddAdditionalParameters":{"strQuantityOnHandMethod":"a<b"}})",
         {"error: WebStore1.tmp: StockOnHandMethod=\"a<b\": \"<\" begins a tag",
          "error: WebStore1.tmp: Create deletes it unsent at line 5"}},
        {create("no such schema.xsd"), {"warning: Create: the schema cannot be read: "}},
        {R"({"AddAdditionalParameters":{}})"},
        {envelope_},
        // No call, or not with these arguments.
        {"{'AddTax':{}}", {"error: not JSON"}},
        {R"({"AddTax":{},"Send":{}})", {"error: a line is one object with one member"}},
        {R"({"AddTx":{}})", {"error: Object doesn't support this property or method: AddTx (did you mean AddTax?)"}},
        {R"({"AddTax":{"strTaxCod":"A"}})", {"error: AddTax: Named argument not found: strTaxCod"}},
        {R"({"AddTax":{"strTaxCode":"A","strTaxCode":"B"}})", {"error: \"strTaxCode\" stands twice in one object"}},
        {R"({"AddTax":{"strTaxCode":1}})", {"error: AddTax: Type mismatch: strTaxCode takes a string"}},
        {R"({"SetStoreID":{}})", {"error: SetStoreID: Argument not optional: lngStoreID"}},
        {R"({"AddTax":{"strTaxCode":""}})", {"error: AddTax: The TaxCode may not be less than 1"}},
        // Records that a Send would fail on: the packets hold two records each.
        {R"({"AddTax":{"strTaxCode":"V1","strCountryCode":"ZA"}})"},
        {R"({"AddTax":{"strTaxCode":"V2","strCountryCode":"a&b"}})",
         {"error: WebStoreTax1.tmp, record 2: Tax TaxCode=\"V2\": CountryCode=\"a&b\": \"&\" begins a reference"}},
        {R"({"AddTax":{"strTaxCode":"V3","strStateProvinceCode":"x\u0001"}})",
         {"error: WebStoreTax2.tmp, record 1: Tax TaxCode=\"V3\": StateProvinceCode=\"x\\u0001\": it holds a control"}},
        {R"({"AddTax":{"strTaxCode":"V4","strCountryCode":"ZA\" Bogus=\"1"}})",
         {"error: WebStoreTax2.tmp, record 2: Tax TaxCode=\"V4\": Bogus=\"1\": "}},
        {R"({"AddTax":{"strTaxCode":"V1"}})", {"warning: Tax TaxCode=\"V1\": line 16 has the same key"}},
        {call("AddTax", {{"strTaxCode", "V5"}, {"strDescription", tooLong}}),
         {"warning: AddTax: strDescription is left out: Description: 51 characters; must be at most 50 characters"}},
        // Records of several calls.
        {R"({"AddProductAttribute":{"lngProductAttributeNumber":1}})",
         {"warning: AddProductAttribute: no Product is open; this becomes part of the next one"}},
        {R"({"AddProductAdditional":{}})", {"warning: AddProductAdditional: no Product is open; this spoils the next"}},
        {R"({"AddProduct":{"strSKU":"S1"}})"},
        {R"({"AddProduct":{"strSKU":"S2"}})", {"error: AddProduct: A new product may not be added if an existing one"}},
        {R"({"AddProductAdditional":{}})"},
        {R"({"AddProductAttribute":{"lngProductAttributeNumber":1}})",
         {"warning: ProductAttribute ProductAttributeNumber=\"1\": line 22 has the same key, in the same record"}},
        {R"({"LockProduct":{}})"},
        {R"({"LockProduct":{}})", {"error: LockProduct: No product has been created"}},
        {order({{u"OrderStatus", u"Shipped"}}),
         {"warning: AddOrder: OrderStatus is left out: OrderStatus: \"Shipped\"; must be one of "}},
        {R"({"AddOrderLineItem":{"lngLineNumber":1,"lngQuantity":3}})",
         {"warning: AddOrderLineItem: lngQuantity is left out: Quantity: lngActualQuantity is not above -1"}},
        {R"({"LockOrder":{}})"},
        {order({{u"Hash", u"(absent)"}, {u"BudgetPeriod", u"6x"}, {u"Message", u"(absent)"}}),
         {"error: AddOrder: Object variable or With block variable not set: the attribute Hash is missing\r\n    "
          "missing in the list: Hash, Message\r\n    BudgetPeriod=\"6x\": Type mismatch"}},
        {R"({"AddOrderLineItem":{"lngLineNumber":0}})"},  // its order is refused already
        {R"({"LockOrder":{}})"},
        {R"({"AddQuotation":{"strXMLParameterList":"<Quote"}})", {"error: AddQuotation: "}},
        {R"({"LockQuote":{}})"},
        {R"({"AddProduct":{"strSKU":"S3"}})",
         {"warning: Product: this Product is never locked, and is not published: LockProduct is missing"}},
        // What is deleted unsent.
        {R"({"AddProductImage":{"strProdCode":"S1","strFileName":"a.gif","intRank":1,"blnDeleted":false}})",
         {"error: WebStoreProductImage1.tmp: Send deletes it unsent"}},
        {R"({"AddMessage":{"strMessageID":"M"}})",
         {"error: WebStoreMessage1.tmp: CleanupTempFiles deletes it unsent at line 41"}},
        {R"({"CleanupTempFiles":{"strFileName":"WebStoreMessage"}})"},
        {R"({"AddCurrency":{"strCurrencyCode":"ZAR"}})"},
        {R"({"SendTempFile":{"strTempFile":"Currency"}})"},
        {R"({"CleanupTempFiles":{"strFileName":"WebStoreCurrency"}})"},
        {R"({"Send":{}})"},
        {R"({"AddTax":{"strTaxCode":"V1"}})", {"error: WebStoreTax4.tmp: Send deletes it unsent: its number follows"}},
        {R"({"Send":{}})"},
        // What another job left, and what this one leaves.
        {use(left_)},
        {R"({"Send":{}})", {"error: WebStoreTax1.tmp, record 1: Tax TaxCode=\"A\": The last record of"}},
    });
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
    EXPECT_THAT(left_.bytes(u"WebStoreTax1.tmp"), EndsWith(std::string("1\0", 2))) << "it is still there";
}

TEST_F(CheckTest, HoldsPacketsToTheSchemaThatTheyAreSentWith) {
    std::string text = storeSchema(SchemaDialect::xsd);
    for (std::size_t at = 0; (at = text.find("\"CountryCode\"", at)) != std::string::npos;) text.insert(at + 1, "X");
    const std::string narrow = utf8(left_.create(u"narrow.xsd", text));
    const auto send = [](const std::string& schema, const char* source = "Memory") {
        return Line{call("Send", {{"strWebStoreSchemaSource", schema}, {"strSource", source}})};
    };
    const auto good = [](const char* key) {
        return Line{call("AddTax", {{"strTaxCode", key}, {"strCountryCode", "ZA"}})};
    };
    const auto bad = [&](const char* key) { return Line{good(key).text, {"error: WebStoreTax"}}; };
    const Line again{R"({"Send":{}})"};
    const Line kind{R"({"SendTempFile":{"strTempFile":"Tax"}})"};
    const Line anew{R"({"NewJob":{}})"};
    const Line away{R"({"CleanupTempFiles":{"strFileName":"WebStoreTax"}})"};
    struct Job {
        std::string created;
        std::vector<Line> rest;
    };
    // A packet holds two records, and is looked at when the third begins the next one.
    for (const Job& job : {
             Job{narrow, {good("1"), good("2"), good("3"), send(schema_)}},
             Job{schema_, {bad("1"), bad("2"), bad("3"), send(narrow)}},
             Job{narrow, {good("1"), good("2"), good("3"), send(schema_, "None"), good("4"), again}},
             Job{narrow, {bad("1"), bad("2"), bad("3"), again, anew, good("4"), good("5"), good("6"), send(schema_)}},
             Job{narrow, {bad("1"), bad("2"), bad("3"), kind, away, anew, good("4"), send(schema_)}},
         }) {
        std::vector<Line> lines{{use(folder_)},
                                {R"({"SetPacketSize":{"lngPacketSize":2}})"},
                                {create(job.created)},
                                {R"({"AddAdditionalParameters":{}})"},
                                {envelope_}};
        lines.insert(lines.end(), job.rest.begin(), job.rest.end());
        expectFindings(lines);
    }
}

/// Fails to be read where its text ends.
class TornText final : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;

private:
    int_type underflow() override { throw std::ios::failure("torn"); }
};

TEST_F(CheckTest, TakesNoFailureToReadForTheEndOfTheJob) {
    TornText torn("{\"NewJob\":{}}\n{\"AddT");
    std::istream in(&torn);
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(checkJob(ports::systemEnvironment(), {in, out, err}, {}), 1);
    EXPECT_THAT(out.str(), StartsWith("line 2: error: the job cannot be read on\n"));
}

TEST_F(CheckTest, ReportsAsOneObjectAndKeepsThePackets) {
    const TempFolder kept;
    const std::vector<Line> job{
        {use(folder_)},
        {create(schema_)},
        {R"({"AddTax":{"strTaxCode":"V1"}})"},
        {R"({"AddTax":{"strTaxCode":"V2","strCountryCode":"a&b"}})"},
        {R"({"Send":{}})"},
        {create(schema_)},
        {R"({"NewJob":{}})"},
        {R"({"AddTax":{"strTaxCode":"V1"}})"},
    };
    CheckOptions options{.keep = kept.path().string(), .report = {.json = true, .strict = true}};
    const Outcome outcome = check(job, options);
    EXPECT_EQ(outcome.status, 1);
    const std::size_t record = std::string("<Tax TaxCode=\"V1\" UsePOSRebate=\"0\" POSRebateRate=\" 0\"/>").size();
    EXPECT_EQ(json::parse(outcome.out), json::parse(R"({"findings":[
        {"severity":"error","line":4,"packet":"WebStoreTax1.tmp","record":2,"element":"Tax","key":{"TaxCode":"V2"},
         "attribute":"CountryCode","value":"a&b","code":"not-well-formed",
         "reason":"\"&\" begins a reference; write &amp; for the character itself"},
        {"severity":"error","line":5,"method":"Send","code":"refused","reason":"No Destination URL has been specified."},
        {"severity":"error","line":6,"method":"Create","code":"refused","reason":"A new store has already been created."},
        {"severity":"error","code":"not-sent","reason":"packet files that are not sent when the job ends: 1"}],
        "kinds":[{"kind":"Tax","records":3,"packets":2,"bytes":)" +
                                                    std::to_string(2 * (3 * record + 18 + 2)) + "}]}"));
    EXPECT_EQ(std::filesystem::file_size(kept.path() / "WebStoreTax1.tmp"), 2 * (2 * record + 18 + 1));
    EXPECT_EQ(std::filesystem::file_size(kept.path() / "2" / "WebStoreTax1.tmp"), 2 * (record + 1));
    EXPECT_THROW(check(job, options), std::runtime_error) << "the folder is not empty any more";

    const Outcome good = check({job.begin(), job.begin() + 3});
    EXPECT_EQ(good.status, 0);
    EXPECT_THAT(good.out, StartsWith("warning: packet files that are not sent when the job ends: 1\nKind "));
    EXPECT_THAT(good.out, HasSubstr("\n0 errors, 1 warning\n"));
}

}  // namespace
}  // namespace quill1xml::cli
