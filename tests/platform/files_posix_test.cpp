#include "platform/ports.hpp"
#include "support/expect_error.hpp"
#include "support/temp_folder.hpp"

#include <gmock/gmock.h>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quill1xml::platform {
namespace {

using ::testing::ElementsAre;
using testing::expectError;

class PosixFilesTest : public ::testing::Test {
protected:
    std::shared_ptr<Files> files_ = systemEnvironment().files;
    testing::TempFolder folder_;
};

/// Lets this process write no file beyond a size, so that a long write stops half-way.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit lower{bytes, former_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &lower);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit former_{};
    void (*handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

TEST_F(PosixFilesTest, AFailedAppendLeavesTheFileAsItWas) {
    const std::u16string name = folder_.name(u"packet");
    const std::u16string fresh = folder_.name(u"fresh");
    files_->appendText(name, u"kept");
    {
        const FileSizeLimit limit(1000);
        expectError([&] { files_->appendText(name, std::u16string(5000, u'x')); }, 61, name);
        expectError([&] { files_->appendText(fresh, std::u16string(5000, u'x')); }, 61, fresh);
    }
    EXPECT_EQ(files_->readText(name), u"kept");
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "fresh"));
    expectError([&] { files_->appendText(u"\\dev\\full", u"x"); }, 61, u"\\dev\\full");
}

TEST_F(PosixFilesTest, VersionsTellFilesApart) {
    const auto of = [&](const char* target) {
        const auto link = folder_.path() / "link";
        std::filesystem::remove(link);
        std::filesystem::create_symlink(target, link);
        return files_->version(folder_.name(u"link"));
    };
    const auto shell = of("/bin/sh");
    ASSERT_TRUE(shell);
    EXPECT_EQ(of("/bin/sh"), shell);
    EXPECT_NE(of("/bin/ls"), shell);
    EXPECT_FALSE(of("/none"));
    EXPECT_FALSE(of("/"));
    folder_.create(u"new", "might be written again within a tick of the clock");
    EXPECT_FALSE(files_->version(folder_.name(u"new")));
}

TEST_F(PosixFilesTest, WhatIsNoFileIsRefused) {
    const std::u16string pipe = folder_.name(u"pipe");
    ASSERT_EQ(mkfifo((folder_.path() / "pipe").c_str(), 0600), 0);
    expectError([&] { files_->appendText(pipe, u"x"); }, 75, pipe + u" is not a regular file");
    for (const std::u16string& name : {pipe, std::u16string(u"\\dev\\zero"), folder_.path().u16string()}) {
        expectError([&] { files_->readBytes(name); }, 75, name + u" is not a regular file");
    }
}

TEST_F(PosixFilesTest, PermissionsHold) {
    if (geteuid() == 0) GTEST_SKIP() << "the superuser may write anywhere";
    const std::u16string name = folder_.create(u"fixed", "");
    std::filesystem::permissions(folder_.path() / "fixed", std::filesystem::perms::owner_read);
    expectError([&] { files_->appendText(name, u"x"); }, 70, name);
}

TEST_F(PosixFilesTest, NamesAreTakenAsTheyAre) {
    for (const Text name : {u"b.XML", u"a.xml", u"B.xml"}) folder_.create(name, "");
    std::filesystem::create_symlink("a.xml", folder_.path() / "link.xml");
    std::filesystem::create_symlink("gone", folder_.path() / "broken.xml");
    EXPECT_THAT(files_->list(folder_.name(u"*.xml")), ElementsAre(u"B.xml", u"a.xml", u"link.xml"));
    EXPECT_THAT(files_->list(folder_.path().u16string() + u"/b*"), ElementsAre(u"b.XML"));

    const std::u16string longName = folder_.name(std::u16string(300, u'x'));
    expectError([&] { files_->appendText(longName, u""); }, 57, longName);
    expectError([&] { files_->readBytes(folder_.name(u"a.xml") + std::u16string(1, u'\0')); }, 53, u"a.xml");
}

}  // namespace
}  // namespace quill1xml::platform
