// Packet files: where they go, how they fill, and what a failure leaves behind.
#include "quill1xml/store.hpp"
#include "store/error_log.hpp"
#include "support/expect_error.hpp"
#include "support/scripted_xml.hpp"

#include <gmock/gmock.h>

#include <functional>
#include <limits>

namespace quill1xml {
namespace {

using ::testing::ElementsAre;
using testing::expectError;
using testing::FakeEnvironment;
using testing::labels;
using testing::utf8;

using FileTexts = std::map<std::u16string, std::u16string>;

void addTax(Store& store, Text code) { store.AddTax({.strTaxCode = code}); }

std::u16string tax(Text code) {
    return u"<Tax TaxCode=\"" + std::u16string(code) + u"\" UsePOSRebate=\"0\" POSRebateRate=\" 0\"/>";
}

TEST(Packets, GoToTheFolderAsItWasSet) {
    const struct {
        const char16_t* path;
        const char16_t* folder;
    } cases[] = {
        {u"d:/work", u"d:\\work\\"}, {u"  d:\\work ", u"d:\\work\\"}, {u" d:\\work\\ ", u" d:\\work\\ "}, {u"", u"\\"}};
    for (const auto& c : cases) {
        FakeEnvironment fake;
        Store store(fake.environment());
        store.SetTempFilePath({c.path});
        store.AddTradingCountry({u"ZA"});
        EXPECT_THAT(fake.files->texts, ElementsAre(std::pair(c.folder + std::u16string(u"WebStoreTradingCountry1.tmp"),
                                                             u"<TradingCountry CountryCode=\"ZA\"/>")));
    }
}

TEST(Packets, GoToTheDefaultFolderFromTheFirstRecordOn) {
    FakeEnvironment fake;
    Store store(fake.environment());
    fake.files->texts[u"WebStoreTax7.tmp"] = u"in the current folder";
    addTax(store, u"A");
    EXPECT_EQ(fake.files->texts.count(u"C:\\WebStoreTax1.tmp"), 1u);
    store.CleanupTempFiles();
    EXPECT_EQ(fake.files->texts, (FileTexts{{u"WebStoreTax7.tmp", u"in the current folder"}}));
}

TEST(Packets, HoldAThousandRecordsWhenTheSizeIsTooSmall) {
    for (const Long size : {1, std::numeric_limits<Long>::min()}) {
        FakeEnvironment fake;
        Store store(fake.environment());
        store.SetTempFilePath({u"T"});
        for (int i = 0; i < 1001; ++i) store.AddTradingCountry({u"ZA"});
        EXPECT_EQ(fake.files->texts.size(), 1u) << "a size that was never set is never reached";
        store.SetPacketSize({size});
        for (int i = 0; i < 1001; ++i) addTax(store, u"A");
        EXPECT_EQ(fake.files->texts[u"T\\WebStoreTax1.tmp"].size(), 1000 * tax(u"A").size());
        EXPECT_EQ(fake.files->texts[u"T\\WebStoreTax2.tmp"], tax(u"A"));
    }
}

TEST(Packets, CountAFailedWriteAndReportItOncePerMethod) {
    FakeEnvironment fake;
    Store store(fake.environment());
    store.SetTempFilePath({u"T"});
    store.SetPacketSize({3});
    addTax(store, u"A");
    EXPECT_THROW(addTax(store, u""), Error);  // not counted
    fake.log->entries.clear();
    fake.files->full = true;
    expectError([&] { addTax(store, u"B"); }, 61, u"T\\WebStoreTax1.tmp");
    EXPECT_EQ(fake.files->texts, (FileTexts{{u"T\\WebStoreTax1.tmp", tax(u"A")}}));
    const std::u16string entry =
        u"\r\nError Number: 61. \r\nError Source: Quill1XML. \r\nError Description: Disk full: T\\WebStoreTax1.tmp. "
        u"\r\nThreadID: 77. \r\nMethod: Quill1XML.Store.";
    EXPECT_THAT(fake.log->entries, ElementsAre(entry + u"AppendToTempFile()", entry + u"AddTax()"));

    fake.files->full = false;
    addTax(store, u"C");
    addTax(store, u"D");
    EXPECT_EQ(fake.files->texts,
              (FileTexts{{u"T\\WebStoreTax1.tmp", tax(u"A") + tax(u"C")}, {u"T\\WebStoreTax2.tmp", tax(u"D")}}));
}

class StuckFiles : public testing::FakeFiles {
public:
    Text stuck;
    void remove(Text fileName) override {
        if (fileName == stuck) throw runtimeError(RuntimeError::permissionDenied, fileName);
        FakeFiles::remove(fileName);
    }
};

TEST(Packets, AreCleanedUpByName) {
    const auto files = std::make_shared<StuckFiles>();
    FakeEnvironment fake;
    fake.files = files;
    Store store(fake.environment());
    store.SetTempFilePath({u"T"});
    const auto left = [&files](Store& from, Text name) {
        for (const char16_t* file : {u"T\\Store1", u"T\\WebStore1", u"T\\WebStoreTax1", u"T\\WebStoreTax2",
                                     u"T\\WebStoreTradingCountry1", u"U\\WebStoreTax1"}) {
            files->texts[file + std::u16string(u".tmp")] = u"x";
        }
        from.CleanupTempFiles({name});
        std::string names;
        for (const auto& [file, text] : files->texts) names += utf8(file.substr(0, file.size() - 4)) + ' ';
        return names;
    };
    EXPECT_EQ(left(store, u"WebStoreTax"), "T\\Store1 T\\WebStore1 T\\WebStoreTradingCountry1 U\\WebStoreTax1 ");
    EXPECT_EQ(left(store, u""), "T\\Store1 U\\WebStoreTax1 ");
    files->stuck = u"T\\WebStoreTax2.tmp";
    expectError([&] { left(store, u""); }, 70, u"WebStoreTax2.tmp");
    EXPECT_EQ(files->texts.size(), 4u) << "what came before it is gone";
    EXPECT_THAT(labels(*fake.log), ElementsAre("Method: Quill1XML.Store.CleanupTempFiles()"));
}

TEST(Labels, DifferFromTheNameWhereHostsKnowThemSo) {
    const auto text = [](store::Label label) { return label.text; };
    EXPECT_EQ(text(store::labels::of<arguments::AddTax>), "Method: Quill1XML.Store.AddTax()");
    EXPECT_EQ(text(store::labels::of<arguments::SetTempFilePath>), "Method: Quill1XML.Store.TempFilePath");
    EXPECT_EQ(text(store::labels::of<arguments::SetStoreID>), "Method: Quill1XML.Store.SetStoreID");
    EXPECT_EQ(text(store::labels::of<arguments::SetPacketSize>), "Method: Quill1XML.Store.SetPacketSize");
    EXPECT_EQ(text(store::labels::of<arguments::EncodeString>), "Method: Quill1XML.EncodeString()");

    const struct {
        std::function<void(Store&)> call;
        std::int32_t number;
        std::vector<std::string> labels;
    } cases[] = {
        {[](Store& s) { s.FormatDate({{1e9}}); }, 5, {"Method: Quill1IO.FormatDate()"}},
        {[](Store& s) { s.CustomerXML({.lngStoreID = 7}); }, 53, {"Method: Quill1XML.Store.XML()"}},
        {[](Store& s) { s.QuoteXML({.lngStoreID = 7}); }, 53, {"Method: Quill1XML.Store.XML()"}},
        {[](Store& s) { s.ReadBinData({u"empty"}); }, 9, {"Method: Quill1XML.Store.ReadBinData()"}},
        {[](Store& s) { s.Create({.lngStoreID = 5, .strLogoImageFile = u"none"}); },
         53,
         {"Method: Quill1XML.Store.EncodeImage()", "Method: Quill1XML.Store.Create()"}},
    };
    for (const auto& c : cases) {
        FakeEnvironment fake;
        fake.files->bytes[u"empty"] = {};
        Store store(fake.environment());
        expectError([&] { c.call(store); }, c.number, u"");
        EXPECT_EQ(labels(*fake.log), c.labels);
    }
}

TEST(ErrorLog, CutsALongDescriptionNotTheLinesAroundIt) {
    FakeEnvironment fake;
    Store store(fake.environment());
    const std::u16string name(40'000, u'x');
    expectError([&] { store.ReadBinData({name}); }, 53, name);
    EXPECT_EQ(fake.log->entries.at(0).size(), 31839u);
    EXPECT_TRUE(fake.log->entries.at(0).ends_with(u". \r\nThreadID: 77. \r\nMethod: Quill1XML.Store.ReadBinData()"));
}

}  // namespace
}  // namespace quill1xml
