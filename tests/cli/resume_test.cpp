// Jobs that end early, and what the command line does about them.
#include "command_line/resume.hpp"
#include "quill1xml/schema.hpp"
#include "quill1xml/text.hpp"
#include "store/journal.hpp"
#include "support/fake_environment.hpp"
#include "support/temp_folder.hpp"

#include <gmock/gmock.h>

#include <sstream>

namespace quill1xml::cli {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// Answers as it was told; a number below 1 is a failed transport, 0 before anything left.
class Answers : public testing::FakeHttp {
public:
    std::deque<int> numbers;

    ports::HttpReply post(Text url, std::string_view, std::string_view body) override {
        requests.push_back({std::u16string(url), {}, std::string(body)});
        const int number = numbers.empty() ? 99 : numbers.front();
        if (!numbers.empty()) numbers.pop_front();
        const Error error = runtimeError(RuntimeError::automationError, u"shop: no answer");
        if (number == 0) throw ports::NotReached(error);
        if (number < 0) throw Error(error);
        return {200, "text/xml",
                "<Receipt ImportNumber=\"" + std::to_string(number) + "\"><Error Number=\"0\"/></Receipt>"};
    }
};

class ResumeTest : public ::testing::Test {
protected:
    ResumeTest() {
        std::filesystem::create_directory(folder_.path() / "packets");
        folder_.create(u"store.xsd", storeSchema(SchemaDialect::xsd));
        environment_.files = ports::systemEnvironment().files;
        environment_.http = http_;
        options_.journal = (folder_.path() / "journal").string();
        options_.wait = [this](std::chrono::seconds pause) { pauses_.push_back(static_cast<int>(pause.count())); };
    }

    template <class Work>
    int with(Work work) {
        out_.str({});
        err_.str({});
        Progress progress(err_, false);
        Exchanges exchanges(environment_, progress);
        return work(exchanges);
    }

    /// Plays a job of a header, taxes in two packets, and a quotation.
    int play() {
        const std::string path = folder_.path().generic_string();
        std::istringstream in(R"({"SetTempFilePath":{"strTempFilePath":")" + path + R"(/packets"}}
{"SetPacketSize":{"lngPacketSize":2}}
{"Create":{"strWebStoreSchemaSource":")" +
                              path + R"(/store.xsd","lngStoreID":57}}
{"AddAdditionalParameters":{}}
{"AddEnvelope":{"strUserName":"u","strPassword":"p","strDestinationURL":"http://shop/a"}}
{"AddTax":{"strTaxCode":"A"}}
{"AddTax":{"strTaxCode":"B"}}
{"AddTax":{"strTaxCode":"C"}}
{"AddProductImage":{"strProdCode":"PEN","strFileName":"pen.jpg","intRank":1,"blnDeleted":false}}
{"SendTempFile":{"strTempFile":"ProductImage"}}
{"Send":{}})");
        return with([&](Exchanges& exchanges) { return playJob(exchanges, {in, out_, err_}, options_); });
    }

    int resume(const std::string& url = {}, const std::string& schema = {}) {
        const ResumeOptions given{.folder = (folder_.path() / "packets").string(), .schema = schema, .url = url};
        return with([&](Exchanges& exchanges) {
            std::istringstream none;
            return resumeJob(exchanges, {none, out_, err_}, options_, given);
        });
    }

    bool hasJournal() const { return std::filesystem::exists(options_.journal); }

    testing::TempFolder folder_;
    std::shared_ptr<Answers> http_ = std::make_shared<Answers>();
    ports::Environment environment_ = testing::FakeEnvironment().environment();
    JobOptions options_;
    std::vector<int> pauses_;
    std::ostringstream out_;
    std::ostringstream err_;
};

TEST_F(ResumeTest, SendsWhatIsLeftWithWhatSendTempFileIsForFirst) {
    http_->numbers = {-1};
    EXPECT_EQ(play(), 1);
    EXPECT_THAT(err_.str(),
                HasSubstr("line 10: SendTempFile: error 440 (Quill1XML): Automation error: shop: no answer"));
    EXPECT_EQ(resume("http://other/b"), 0);
    EXPECT_EQ(err_.str(),
              "[1/1] WebStoreProductImage1.tmp: import 99\n"
              "warning: SendTempFile: WebStoreProductImage1.tmp may have arrived twice: it was posted before, and no "
              "receipt came.\n"
              "[1/3] WebStore1.tmp: import 99\n[2/3] WebStoreTax1.tmp: import 99\n[3/3] WebStoreTax2.tmp: import 99\n");
    EXPECT_EQ(out_.str(), "{\"Send\":\"WebStore1.tmp 99,WebStoreTax1.tmp 99,WebStoreTax2.tmp 99\"}\n");
    EXPECT_EQ(http_->requests.back().url, u"http://other/b");
    EXPECT_FALSE(hasJournal());
    EXPECT_EQ(resume(), 0);
    EXPECT_THAT(err_.str(), StartsWith("nothing to do: there are no packet files in "));
}

TEST_F(ResumeTest, OneJobAfterTheOther) {
    http_->numbers = {1, 2, 3, -1};
    EXPECT_EQ(play(), 1);
    const std::string folder = std::filesystem::canonical(folder_.path() / "packets").string();
    EXPECT_EQ(play(), 1);
    EXPECT_EQ(err_.str(),
              "the job in " + folder + " is not finished: 3 of 4 packets were accepted\n\"quill1xml resume " + folder +
                  " --journal " + options_.journal + "\" sends what is left of it; --discard gives it up\n");
    options_.discard = true;
    EXPECT_EQ(play(), 0);
    EXPECT_THAT(err_.str(),
                StartsWith("warning: gives up the job in " + folder + ", of which 3 of 4 packets were accepted"));
    EXPECT_EQ(http_->requests.size(), 8U);

    // Without a journal nothing is known of what waits.
    std::filesystem::remove(options_.journal);
    folder_.create(u"packets/WebStoreTax1.tmp", "\xFF\xFE");
    EXPECT_EQ(resume(), 1);
    EXPECT_THAT(err_.str(), HasSubstr("keeps no job: with it nothing was posted. Play the job again"));
}

TEST_F(ResumeTest, TriesAgainWhereTheTransportFails) {
    options_.retries = 3;
    http_->numbers = {0, 1, 2, -1, 3, -1, 0, -1, -1};
    EXPECT_EQ(play(), 1);
    EXPECT_THAT(pauses_, ElementsAre(1, 1, 2, 4)) << "each sending for itself";
    EXPECT_THAT(err_.str(),
                HasSubstr("warning: line 10: SendTempFile: Automation error: shop: no answer; trying again in "
                          "1 s (1 of 3)\n"));
    EXPECT_EQ(resume(), 0);
    EXPECT_EQ(out_.str(), "{\"Send\":\"WebStore1.tmp 2,WebStoreTax1.tmp 3,WebStoreTax2.tmp 99\"}\n");
    EXPECT_THAT(err_.str(), HasSubstr("WebStoreTax1.tmp may have arrived twice"));
    EXPECT_THAT(err_.str(), ::testing::Not(HasSubstr("WebStore1.tmp may"))) << "the first try never left";

    // A gap would be deleted unsent.
    http_->numbers = {1, 2, -1};
    options_.retries = 0;
    EXPECT_EQ(play(), 1);
    folder_.create(u"packets/WebStoreCurrency2.tmp", "\xFF\xFE");
    EXPECT_EQ(resume(), 1);
    EXPECT_THAT(err_.str(), HasSubstr("WebStoreCurrency2.tmp would be deleted unsent: its number follows a gap."));
    EXPECT_TRUE(hasJournal());
}

TEST_F(ResumeTest, EndsADeletionAndTakesASchemaThatMoved) {
    http_->numbers = {1, 2, 3, -1};
    EXPECT_EQ(play(), 1);
    const std::filesystem::path moved = folder_.path() / "moved.xsd";
    std::filesystem::rename(folder_.path() / "store.xsd", moved);
    EXPECT_EQ(resume(), 1);
    EXPECT_THAT(err_.str(), HasSubstr("store.xsd"));
    EXPECT_EQ(resume({}, moved.string()), 0);
    EXPECT_THAT(out_.str(), HasSubstr("WebStoreTax2.tmp 99"));

    // All was sent and all files are gone, but for the last word of the journal.
    std::filesystem::rename(moved, folder_.path() / "store.xsd");
    http_->numbers = {1, 2, 3, -1};
    EXPECT_EQ(play(), 1);
    store::Journal(environment_.files, toUtf16(options_.journal)).deleting();
    for (const char* name : {"1", "Tax1", "Tax2", "ProductImage1"}) {
        std::filesystem::remove(folder_.path() / "packets" / (std::string("WebStore") + name + ".tmp"));
    }
    const std::size_t posts = http_->requests.size();
    EXPECT_EQ(resume(), 0);
    EXPECT_EQ(err_.str(), "all packets were sent before; their files are deleted now\n");
    EXPECT_FALSE(hasJournal());
    EXPECT_EQ(http_->requests.size(), posts);

    // The next job may begin without it.
    http_->numbers = {1, 2, 3, -1};
    EXPECT_EQ(play(), 1);
    store::Journal(environment_.files, toUtf16(options_.journal)).deleting();
    http_->numbers.clear();
    EXPECT_EQ(play(), 0) << err_.str();
}

}  // namespace
}  // namespace quill1xml::cli
