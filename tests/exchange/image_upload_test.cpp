// Image files: the requests they become, and where a failure stops them.
#include "quill1xml/store.hpp"
#include "support/expect_error.hpp"
#include "support/scripted_xml.hpp"

#include <gmock/gmock.h>

namespace quill1xml {
namespace {

using ::testing::ElementsAre;
using testing::errorOf;
using testing::expectError;
using ::testing::IsEmpty;
using testing::utf8;

const char* const label = "Method: Quill1XML.StoreImage.Send()";

class ImageUpload : public ::testing::Test {
protected:
    ImageUpload() {
        fake_.files->bytes = {{u"D\\c.gif", {'C'}},
                              {u"D\\a.gif", {'A'}},
                              {u"D\\b.gif", {'B'}},
                              {u"D\\x.png", {'X'}},
                              {u"D\\e\\d.gif", {}}};
    }

    void accept(int count) {
        for (int i = 0; i < count; ++i) fake_.http->reply("<Receipt><Error Number=\"0\"/></Receipt>");
    }

    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& request : fake_.http->requests) {
            const std::size_t start = request.body.find("ImageName=\"") + 11;
            names.push_back(request.body.substr(start, request.body.find('"', start) - start));
        }
        return names;
    }

    testing::FakeEnvironment fake_;
    Store store_{fake_.environment()};
};

TEST_F(ImageUpload, PostsOneRequestPerFileInTheOrderOfNames) {
    accept(3);
    EXPECT_EQ(store_.SendImage({u"12", u"u", u"p", u"D", u"*.gif", 0, u"http://shop/i"}), 12);
    EXPECT_THAT(names(), ElementsAre("a.gif", "b.gif", "c.gif"));
    for (const auto& request : fake_.http->requests) {
        EXPECT_EQ(request.url, u"http://shop/i");
        EXPECT_EQ(request.contentType, "application/x-www-form-urlencoded");
    }
    EXPECT_EQ(store_.SendImage({u" -3 ", u"u", u"p", u"D", u"*.jpg", 0, u"http://shop/i"}), -3);
    EXPECT_EQ(store_.SendImage({u"4", u"u", u"p", u"E", u"*.gif", 0, u"http://shop/i"}), 4);
    EXPECT_EQ(fake_.http->requests.size(), 3u);
    EXPECT_THAT(fake_.log->entries, IsEmpty());
}

TEST_F(ImageUpload, RequestsCarryCredentialsOptionsAndBytes) {
    const std::string start =
        "<?xml version=\"1.0\"?>\r\n<Store xmlns:dt=\"urn:schemas-microsoft-com:datatypes\" StoreID=\"0012\" "
        "UserName=\"Zo\u00EB &#38; &#60;co&#62;\" Password=\"&#34;'&#38;#39;\" CreateThumbnail=\"";
    const std::string image = "><Image dt:dt=\"bin.base64\" ImageName=\"\u0416&#38;'1'.gif\">";
    fake_.files->bytes = {{u"D\\\u0416&'1'.gif", {0, 0xFF, 0x10, 'a'}}};
    arguments::SendImage arguments{u"0012", u"Zo\u00EB & <co>", u"\"'&#39;", u"D", u"\u0416&'1'.gif",
                                   -1,      u"http://shop"};
    accept(2);
    EXPECT_EQ(store_.SendImage(arguments), 12);
    EXPECT_EQ(fake_.http->requests[0].body,
              start + "-1\" UploadFolder=\"ProductImages\"" + image + "AP8QYQ==</Image></Store>");

    // A deletion needs the name only: the file is not read.
    arguments.intblnCreateThumbNail = 32767;
    arguments.strUploadFolder = u"\u00C4";
    arguments.blnDeleted = true;
    fake_.files->bytes.clear();
    fake_.files->texts = {{u"D\\\u0416&'1'.gif", u"unreadable as bytes"}};
    EXPECT_EQ(store_.SendImage(arguments), 12);
    EXPECT_EQ(fake_.http->requests[1].body,
              start + "32767\" UploadFolder=\"\u00C4\" Deleted=\"True\"" + image + "</Image></Store>");
}

TEST_F(ImageUpload, NeedsAUrlBeforeAndANumberAfterThePosts) {
    const auto error = errorOf([&] { store_.SendImage({u"12", u"u", u"p", u"D", u"*.gif"}); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number(), applicationError);
    EXPECT_EQ(error->source(), u"Quill1XML.Store.SendImage()");
    EXPECT_EQ(error->description(), u"No Destination URL has been specified.");
    EXPECT_THAT(fake_.http->requests, IsEmpty());
    accept(3);
    expectError([&] { store_.SendImage({u"12a", u"u", u"p", u"D", u"*.gif", 0, u"http://shop"}); }, 13, u"");
    EXPECT_THAT(names(), ElementsAre("a.gif", "b.gif", "c.gif"));
    EXPECT_THAT(testing::labels(*fake_.log), ElementsAre(label, label));
}

TEST_F(ImageUpload, EndsAtTheFirstFailure) {
    const struct {
        const char* reply;  ///< to the second image; null for no connection
        int number;
        const char* source;
        const char* description;
    } cases[] = {
        {"<Receipt><Error Number=\"70\" Source=\"Disk\" Description=\"full\"/></Receipt>", 70, "Disk", "Server: full"},
        {"<html><p></html>", applicationError, "Quill1XML.Store.Send()", "Response XML failed to load."},
        {"<Store/>", 91, "Quill1XML", "Object variable or With block variable not set: the element Receipt is missing"},
        {nullptr, 440, "Quill1XML", "Automation error: no connection"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.reply != nullptr ? c.reply : "no connection");
        fake_.http->requests.clear();
        fake_.http->replies.clear();
        fake_.log->entries.clear();
        accept(1);
        if (c.reply != nullptr) fake_.http->reply(c.reply);
        const auto error = errorOf([&] { store_.SendImage({u"12", u"u", u"p", u"D", u"*.gif", 0, u"http://shop"}); });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->number(), c.number);
        EXPECT_EQ(utf8(error->source()), c.source);
        EXPECT_EQ(utf8(error->description()), c.description);
        EXPECT_THAT(names(), ElementsAre("a.gif", "b.gif"));
        EXPECT_THAT(testing::labels(*fake_.log), ElementsAre(label));
    }
}

TEST_F(ImageUpload, StopsAtAFileThatCannotBeRead) {
    const arguments::SendImage arguments{u"12", u"u", u"p", u"D", u"*.gif", 0, u"http://shop"};
    accept(2);
    fake_.files->bytes[u"D\\b.gif"] = {};
    expectError([&] { store_.SendImage(arguments); }, 9, u"b.gif");
    fake_.files->bytes.erase(u"D\\b.gif");
    fake_.files->texts = {{u"D\\b.gif", u"unreadable as bytes"}};
    fake_.files->bytes.erase(u"D\\a.gif");
    expectError([&] { store_.SendImage(arguments); }, 53, u"b.gif");
    EXPECT_THAT(names(), ElementsAre("a.gif"));
    EXPECT_THAT(testing::labels(*fake_.log), ElementsAre("Method: Quill1XML.Store.ReadBinData()", label,
                                                         "Method: Quill1XML.Store.ReadBinData()", label));
}

}  // namespace
}  // namespace quill1xml
