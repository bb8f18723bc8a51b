#include "platform/ports.hpp"
#include "support/expect_error.hpp"
#include "support/temp_folder.hpp"

#include <gmock/gmock.h>

namespace quill1xml::platform {
namespace {

using namespace std::string_literals;
using ::testing::AnyOf;
using ::testing::ElementsAre;
using testing::expectError;
using ::testing::IsEmpty;

class FilesTest : public ::testing::Test {
protected:
    std::shared_ptr<Files> files_ = systemEnvironment().files;
    testing::TempFolder folder_;
};

TEST_F(FilesTest, AppendedTextIsUtf16BehindOneMark) {
    const std::u16string name = folder_.name(u"packet \u00E9\u0416.xml");
    files_->appendText(name, u"a\u20AC");
    files_->appendText(name, u"");
    files_->appendText(name, u"b");
    EXPECT_EQ(folder_.bytes(u"packet \u00E9\u0416.xml"),
              "\xFF\xFE"
              "a\0\xAC\x20"
              "b\0"s);
    EXPECT_EQ(files_->readText(name), u"a\u20ACb");
    EXPECT_THAT(files_->readBytes(name), ElementsAre(0xFF, 0xFE, 'a', 0, 0xAC, 0x20, 'b', 0));

    files_->writeText(name, u"new");
    EXPECT_EQ(files_->readText(name), u"new");
}

TEST_F(FilesTest, AnEmptyFileIsEmptyTextAndGetsItsMark) {
    const std::u16string name = folder_.create(u"empty", "");
    EXPECT_EQ(files_->readText(name), u"");
    EXPECT_THAT(files_->readBytes(name), IsEmpty());
    files_->appendText(name, u"");
    EXPECT_EQ(folder_.bytes(u"empty"), "\xFF\xFE");
    EXPECT_EQ(files_->readText(name), u"");
}

TEST_F(FilesTest, LargeTextsArriveWhole) {
    std::u16string text(3'000'001, u'x');
    for (std::size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char16_t>(1 + i % 50'000);
    const std::u16string name = folder_.name(u"large");
    files_->appendText(name, text);
    EXPECT_TRUE(files_->readText(name) == text);
}

TEST_F(FilesTest, OtherTextThanUtf16IsATypeMismatch) {
    for (const std::string& bytes : {"<a/>"s,
                                     "\xFF\xFE"
                                     "a"s,
                                     "\xFE\xFF\0a"s, "\xFF"s}) {
        const std::u16string name = folder_.create(u"other.xml", bytes);
        expectError([&] { files_->readText(name); }, 13, name);
    }
}

TEST_F(FilesTest, MissingFilesAndFoldersAreToldApart) {
    const std::u16string file = folder_.name(u"missing");
    const std::u16string folder = folder_.name(u"no\\folder");
    const std::u16string inFile = folder_.create(u"plain", "") + u"\\file";
    const struct {
        const char* call;
        std::function<void(Text)> run;
    } calls[] = {
        {"readText", [&](Text name) { files_->readText(name); }},
        {"readBytes", [&](Text name) { files_->readBytes(name); }},
        {"remove", [&](Text name) { files_->remove(name); }},
        {"flush", [&](Text name) { files_->flush(name); }},
        {"appendText", [&](Text name) { files_->appendText(name, u"x"); }},
        {"writeText", [&](Text name) { files_->writeText(name, u"x"); }},
    };
    for (const auto& c : calls) {
        SCOPED_TRACE(c.call);
        const bool creates = std::string_view(c.call).ends_with("eText") || std::string_view(c.call) == "appendText";
        if (!creates) expectError([&] { c.run(file); }, 53, file);
        expectError([&] { c.run(folder + u"\\file"); }, 76, folder);
        expectError([&] { c.run(inFile); }, 76, inFile.substr(0, inFile.size() - 5));
    }
    EXPECT_THAT(files_->list(folder + u"\\*"), IsEmpty());
    EXPECT_THAT(files_->list(inFile), IsEmpty());
}

TEST_F(FilesTest, AFolderIsNoFile) {
    const std::u16string name = folder_.name(u"folder");
    std::filesystem::create_directory(folder_.path() / "folder");
    const auto error = testing::errorOf([&] { files_->appendText(name, u"x"); });
    ASSERT_TRUE(error);
    EXPECT_THAT(error->number(), AnyOf(70, 75));
    EXPECT_NE(error->description().find(name), std::u16string::npos);
}

TEST_F(FilesTest, ListNamesNormalFilesThatMatchInOrder) {
    for (const Text name : {u"p10.xml", u"p2.xml", u"p1.xml", u"p1.xml.old", u"q.xml", u"\u00E9.xml", u"none"}) {
        folder_.create(name, "");
    }
    std::filesystem::create_directory(folder_.path() / "p3.xml");
    EXPECT_THAT(files_->list(folder_.name(u"p*.xml")), ElementsAre(u"p1.xml", u"p10.xml", u"p2.xml"));
    EXPECT_THAT(files_->list(folder_.name(u"p?.xml")), ElementsAre(u"p1.xml", u"p2.xml"));
    EXPECT_THAT(files_->list(folder_.name(u"none")), ElementsAre(u"none"));
    EXPECT_THAT(files_->list(folder_.name(u"\u00E9*")), ElementsAre(u"\u00E9.xml"));
    EXPECT_THAT(files_->list(folder_.name(u"x*")), IsEmpty());
}

TEST_F(FilesTest, ReadOnlyFilesCanBeFlushedAndRemoved) {
    const std::u16string name = folder_.create(u"fixed", "x");
    std::filesystem::permissions(folder_.path() / "fixed", std::filesystem::perms::owner_read);
    files_->flush(name);
    files_->remove(name);
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "fixed"));
}

}  // namespace
}  // namespace quill1xml::platform
