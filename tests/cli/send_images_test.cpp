// Sending images: what goes out, and what is said of it.
#include "command_line/send_images.hpp"

#include "support/fake_environment.hpp"

#include <gmock/gmock.h>

#include <sstream>

namespace quill1xml::cli {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

class SendImagesTest : public ::testing::Test {
protected:
    SendImagesTest() {
        for (const char16_t* name : {u"a.jpg", u"b.jpg", u"c.jpg", u"d.gif"}) {
            fake_.files->bytes[u"pics\\" + std::u16string(name)] = {'f', 'o'};
        }
    }

    int send() {
        Progress progress(err_, false);
        Exchanges exchanges(fake_.environment(), progress);
        return sendImages(exchanges, options_, out_, err_);
    }

    void answer(int number) {
        fake_.http->reply("<Receipt><Error Number=\"" + std::to_string(number) +
                          "\" Source=\"Images\" Description=\"Too large\"/></Receipt>");
    }

    testing::FakeEnvironment fake_;
    ImageOptions options_{.folder = "pics",
                          .spec = "*.jpg",
                          .url = "http://shop",
                          .store = 57,
                          .user = "u",
                          .password = "p",
                          .uploadFolder = "Größen"};
    std::ostringstream out_;
    std::ostringstream err_;
};

TEST_F(SendImagesTest, SendsTheMatchingFiles) {
    for (int i = 0; i < 3; ++i) answer(0);
    options_.thumbnail = true;
    EXPECT_EQ(send(), 0);
    EXPECT_EQ(out_.str(), "3 images to send: *.jpg\n3 images sent to Größen of store 57\n");
    EXPECT_EQ(err_.str(), "");
    ASSERT_EQ(fake_.http->requests.size(), 3U);
    EXPECT_THAT(fake_.http->requests[2].body,
                AllOf(HasSubstr("StoreID=\"57\" UserName=\"u\" Password=\"p\" CreateThumbnail=\"1\""),
                      HasSubstr("UploadFolder=\"Größen\">"), HasSubstr("ImageName=\"c.jpg\">Zm8=<")));
}

TEST_F(SendImagesTest, DeletesByName) {
    answer(0);
    options_.spec = "d.gif";
    options_.remove = true;
    EXPECT_EQ(send(), 0);
    EXPECT_EQ(out_.str(), "1 image to delete: d.gif\n1 image deleted from Größen of store 57\n");
    EXPECT_THAT(fake_.http->requests.at(0).body, AllOf(HasSubstr("CreateThumbnail=\"0\""), HasSubstr("Deleted=\"")));
}

TEST_F(SendImagesTest, EndsAtTheFirstErrorAndWithoutFiles) {
    answer(0);
    answer(8);
    EXPECT_EQ(send(), 1);
    EXPECT_EQ(out_.str(), "3 images to send: *.jpg\n");
    EXPECT_EQ(err_.str(), "send-images: error 8 (Images): Server: Too large\n");
    EXPECT_EQ(fake_.http->requests.size(), 2U);

    // What cannot be read is not the fault of the answer before it.
    answer(0);
    fake_.files->bytes.erase(u"pics\\b.jpg");
    for (const char16_t* listed : {u"pics\\a.jpg", u"pics\\b.jpg"}) fake_.files->texts[listed];
    err_.str({});
    EXPECT_EQ(send(), 1);
    EXPECT_EQ(err_.str(), "send-images: error 53 (Quill1XML): File not found: pics\\b.jpg\n");

    fake_.files->texts.clear();
    options_.spec = "*.png";
    EXPECT_EQ(send(), 1);
    EXPECT_THAT(err_.str(), HasSubstr("send-images: no file in pics matches *.png;"));
    EXPECT_EQ(fake_.http->requests.size(), 3U);
}

}  // namespace
}  // namespace quill1xml::cli
