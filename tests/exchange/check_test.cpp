// Packet files with mistakes in them, before and after a Send that fails on them.
#include "quill1xml/schema.hpp"
#include "quill1xml/store.hpp"
#include "support/fake_environment.hpp"
#include "support/temp_folder.hpp"
#include "support/text_printer.hpp"

#include <gmock/gmock.h>

namespace quill1xml {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using testing::utf8;

class Check : public ::testing::Test {
protected:
    Check() {
        store_.SetTempFilePath({folder_.path().u16string()});
        store_.Create({.strWebStoreSchemaSource = folder_.create(u"store.xsd", storeSchema(SchemaDialect::xsd)),
                       .lngStoreID = 57});
        store_.AddAdditionalParameters();
        store_.AddEnvelope({u"u", u"p", u"http://127.0.0.1:1/"});
    }

    void put(Text file, Text text) { files_->writeText(folder_.name(file), text); }

    std::vector<std::string> lines(const Store& store) {
        std::vector<std::string> lines;
        for (const Problem& problem : store.check()) lines.push_back(utf8(describe(problem)));
        return lines;
    }

    static ports::Environment environment() {
        ports::Environment environment = ports::systemEnvironment();
        environment.log = testing::FakeEnvironment().log;
        return environment;
    }

    testing::TempFolder folder_;
    std::shared_ptr<ports::Files> files_ = ports::systemEnvironment().files;
    Store store_{environment()};
};

TEST_F(Check, FindsEveryBadRecordAndNamesWhatIsWrongWithIt) {
    for (const Text country : {u"ZA", u"a&b", u"NA", u"<"}) {
        store_.AddTax({.strTaxCode = u"V2", .strDescription = u"VAT", .dblRate = 15, .strCountryCode = country});
    }
    store_.AddMessage({u"M1", u"Fine"});
    EXPECT_THAT(lines(store_),
                ElementsAre("WebStoreTax1.tmp, record 2: Tax TaxCode=\"V2\": CountryCode=\"a&b\": \"&\" begins a "
                            "reference; write &amp; for the character itself",
                            "WebStoreTax1.tmp, record 4: Tax TaxCode=\"V2\": CountryCode=\"<\": \"<\" begins a tag; "
                            "write &lt; for the character itself"));

    const std::string before = folder_.bytes(u"WebStoreTax1.tmp");
    EXPECT_THROW(store_.Send(), Error);
    EXPECT_EQ(folder_.bytes(u"WebStoreTax1.tmp"), before);
    // The head goes first, to a port where nobody listens.
    EXPECT_THAT(utf8(store_.LastFailure()), AllOf(StartsWith("WebStore1.tmp: "), HasSubstr("127.0.0.1: ")));
    EXPECT_THROW(store_.SendTempFile({u"Tax"}), Error);
    std::string found;
    for (const std::string& line : lines(store_)) found += (found.empty() ? "" : "\r\n") + line;
    EXPECT_EQ(utf8(store_.LastFailure()), found);
    EXPECT_THAT(utf8(store_.CheckPackets()), StartsWith("error: " + found.substr(0, 60)));
}

TEST_F(Check, TellsBrokenFilesFromRefusedOnesAndForgottenOnes) {
    const std::u16string good =
        u"<Tax TaxCode=\"A\" Description=\"d\" Rate=\" 15\" UsePOSRebate=\"0\" POSRebateRate=\" 0\"/>";
    put(u"WebStoreTax1.tmp", good + u"<Tax TaxCode=\"B\" Rate=\" 1x\"/>" + good);
    put(u"WebStoreTax2.tmp", good + good.substr(0, 30));
    put(u"WebStoreTax4.tmp", good);
    put(u"WebStoreQuote57_1.tmp", u"<Quote>");
    folder_.create(u"WebStoreCurrency1.tmp", "<Currency/>");
    const std::vector<Problem> problems = store_.check();
    ASSERT_EQ(problems.size(), 6u) << utf8(store_.CheckPackets());
    const struct {
        const char* packet;
        Problem::Code code;
        std::size_t record;
        const char* attribute;
        const char* reason;
    } expected[] = {
        {"WebStoreCurrency1.tmp", Problem::Code::notWellFormed, 0, "", "not UTF-16"},
        {"WebStoreQuote57_1.tmp", Problem::Code::torn, 1, "", "It starts at byte 2"},
        {"WebStoreTax1.tmp", Problem::Code::notValid, 2, "Rate", ""},
        {"WebStoreTax2.tmp", Problem::Code::torn, 2, "", "cut the file off there"},
        {"WebStoreQuote57_1.tmp", Problem::Code::notSent, 0, "", "SendTempFile"},
        {"WebStoreTax4.tmp", Problem::Code::notSent, 0, "", "gap"},
    };
    for (std::size_t i = 0; i < problems.size(); ++i) {
        SCOPED_TRACE(utf8(describe(problems[i])));
        EXPECT_EQ(utf8(problems[i].packet), expected[i].packet);
        EXPECT_EQ(problems[i].code, expected[i].code);
        EXPECT_EQ(problems[i].record, expected[i].record);
        EXPECT_EQ(utf8(problems[i].attribute), expected[i].attribute);
        EXPECT_THAT(utf8(problems[i].reason), HasSubstr(expected[i].reason));
        EXPECT_EQ(problems[i].severity == Problem::Severity::warning, problems[i].code == Problem::Code::notSent);
    }
}

TEST_F(Check, KnowsAFolderThatAnotherStoreLeft) {
    store_.AddTax({.strTaxCode = u"V", .strCountryCode = u"a&b"});
    Store other(environment());
    other.SetTempFilePath({folder_.path().u16string()});
    EXPECT_THAT(lines(other), ElementsAre(StartsWith("no schema source is known"),
                                          StartsWith("WebStoreTax1.tmp, record 1: Tax TaxCode=\"V\": CountryCode=")));
}

TEST_F(Check, NamesWhatNoDocumentMayHold) {
    const Text reference = u"\"&\" begins a reference; write &amp; for the character itself";
    const Text control = u"it holds a control character, which no document may";
    const Text noCharacter = u"it holds a code that is no character";
    const Text half = u"it holds half a surrogate pair";
    const struct {
        std::u16string value;
        Text reason;  ///< empty: nothing is wrong with it
    } cases[] = {
        {u"&amp;&lt;&gt;&quot;&apos;&#233;&#xE9;&#x1F4A1; \t\r\n\U0001F4A1\uFFFD", u""},
        {u"&#233 x", reference},
        {u"&#xE9;&#233;\U0001F4A1&", reference},
        {u"&#;", reference},
        {u"&#x;", reference},
        {u"&#xG;", reference},
        {u"&#E9;", reference},
        {u"&AMP;", reference},
        {u"R & D", reference},
        {u"a\u0001b", control},
        {u"&#xE9;\U0001F4A1\u001F", control},
        {u"\uFFFE", noCharacter},
        {u"\uFFFF", noCharacter},
        {u"a\xD83D", half},
        {u"\xDCA1x", half},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(utf8(c.value));
        put(u"WebStoreMessage1.tmp",
            u"<Message MessageID=\"M\" MessageText=\"fine\"/><Message MessageID=\"N\" MessageText=\"" + c.value +
                u"\"/>");
        const std::vector<Problem> problems = store_.check();
        ASSERT_EQ(problems.size(), c.reason.empty() ? 0u : 1u) << utf8(store_.CheckPackets());
        if (c.reason.empty()) continue;
        EXPECT_EQ(problems[0].code, Problem::Code::notWellFormed);
        EXPECT_EQ(problems[0].record, 2u);
        EXPECT_EQ(utf8(problems[0].attribute), "MessageText");
        EXPECT_EQ(problems[0].value, c.value);
        EXPECT_EQ(utf8(problems[0].reason), utf8(c.reason));
    }
}

TEST_F(Check, ShowsNoPasswordAndNoMoreOfAValueThanNeeded) {
    // The pair is not cut in halves.
    const std::u16string value = std::u16string(58, u'x') + u"\U0001F4A1 and more";
    put(u"WebStoreDebtorStaff1.tmp",
        u"<DebtorStaff EMailAddress=\"a@b\" DebtorID=\"D\" Password=\"p&w\"/>"
        u"<DebtorStaff EMailAddress=\"a@b\" DebtorID=\"D\" Name=\"&" +
            value + u"\"/>");
    const std::vector<Problem> problems = store_.check();
    ASSERT_EQ(problems.size(), 2u);
    EXPECT_EQ(utf8(problems[0].attribute + u"=" + problems[0].value), "Password=***");
    EXPECT_EQ(utf8(problems[1].value), "&" + utf8(value.substr(0, 58)) + "\u2026");
    EXPECT_THAT(utf8(store_.CheckPackets()), ::testing::Not(HasSubstr("p&w")));
}

TEST_F(Check, TellsWhatKeepsTheSchemaFromUse) {
    store_.AddTax({.strTaxCode = u"V", .strCountryCode = u"a&b"});
    folder_.create(u"store.xsd", "<broken");
    EXPECT_THAT(lines(store_), ElementsAre(AllOf(HasSubstr("The schema "), HasSubstr("store.xsd cannot be used: ")),
                                           StartsWith("WebStoreTax1.tmp, record 1: ")));
    EXPECT_THAT(utf8(store_.CheckPackets()), StartsWith("error: The schema "));
}

TEST_F(Check, AFailureNamesTheFirstTwentyRecords) {
    for (int i = 0; i < 25; ++i) store_.AddTax({.strTaxCode = u"V", .strCountryCode = u"a&b"});
    EXPECT_THROW(store_.SendTempFile({u"Tax"}), Error);
    const std::string account = utf8(store_.LastFailure());
    EXPECT_EQ(std::ranges::count(account, '\n'), 19);
    EXPECT_THAT(account, ::testing::AllOf(StartsWith("WebStoreTax1.tmp, record 1: "), HasSubstr(", record 20: ")));

    // That no schema is known is the failure itself, and no fault of the packet.
    put(u"WebStoreTax1.tmp", u"<Tax TaxCode=\"A\"/>");
    Store other(environment());
    other.SetTempFilePath({folder_.path().u16string()});
    EXPECT_THROW(other.SendTempFile({u"Tax"}), Error);
    EXPECT_THAT(utf8(other.LastFailure()),
                AllOf(StartsWith("WebStoreTax1.tmp: "), HasSubstr("no schema source was given")));
}

}  // namespace
}  // namespace quill1xml
