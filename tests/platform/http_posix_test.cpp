#include "platform/posix/http.hpp"
#include "support/expect_error.hpp"
#include "support/loopback_server.hpp"

#include <gmock/gmock.h>

namespace quill1xml::platform {
namespace {

using ::testing::AllOf;
using ::testing::AnyOf;
using ::testing::EndsWith;
using testing::expectError;
using ::testing::HasSubstr;
using testing::httpReply;
using testing::LoopbackServer;
using ::testing::Not;
using ::testing::StartsWith;

LoopbackServer::Answer always(std::string reply) {
    return [reply](const std::string&) { return reply; };
}

TEST(CurlHttp, PostsTheBodyAndReturnsTheReply) {
    LoopbackServer server(always(httpReply("500 Oops", "Content-Type: text/xml; charset=utf-8\r\n", "<Receipt/>")));
    const std::string large(2'000'000, 'x');
    const HttpReply reply = CurlHttp().post(u"http://" + server.address() + u"/a b?key=\u00E9", "text/xml", large);
    EXPECT_EQ(reply.status, 500);
    EXPECT_EQ(reply.contentType, "text/xml; charset=utf-8");
    EXPECT_EQ(reply.body, "<Receipt/>");
    CurlHttp().post(u"http://" + server.address(), "text/xml", {});
    ASSERT_EQ(server.requests().size(), 2u);
    EXPECT_THAT(server.requests()[0].substr(0, 500),
                AllOf(AnyOf(StartsWith("POST /a%20b?key=%c3%a9 HTTP"), StartsWith("POST /a%20b?key=%C3%A9 HTTP")),
                      HasSubstr("Content-Type: text/xml\r\n"), Not(HasSubstr("Expect:"))));
    EXPECT_TRUE(server.requests()[0].ends_with("\r\n\r\n" + large));
    EXPECT_THAT(server.requests()[1], AllOf(HasSubstr("Content-Length: 0\r\n"), EndsWith("\r\n\r\n")));
}

TEST(CurlHttp, ARedirectedBodyIsPostedAgain) {
    const struct {
        std::string status;
        std::string method;
    } cases[] = {{"301 Moved", "POST"}, {"302 Found", "POST"}, {"307 Moved", "POST"}, {"303 See Other", "GET"}};
    for (const auto& c : cases) {
        LoopbackServer server([&](const std::string& request) {
            return request.find(" /new ") == std::string::npos ? httpReply(c.status, "Location: /new\r\n", "moved")
                                                               : httpReply("200 OK", "", "done");
        });
        EXPECT_EQ(CurlHttp().post(u"http://" + server.address() + u"/old", "text/xml", "<a/>").body, "done");
        ASSERT_EQ(server.requests().size(), 2u);
        EXPECT_THAT(server.requests()[1], StartsWith(c.method + " /new"));
        EXPECT_EQ(server.requests()[1].ends_with("<a/>"), c.method == "POST");
    }
}

TEST(CurlHttp, RedirectsAreFewAndStayWithHttp) {
    for (const std::string target : {"/again", "file:///etc/passwd", "ftp://127.0.0.1/"}) {
        LoopbackServer server(always(httpReply("302 Found", "Location: " + target + "\r\n", "")));
        expectError([&] { CurlHttp().post(u"http://" + server.address(), "text/xml", "<a/>"); }, 440, u"127.0.0.1");
        EXPECT_EQ(server.requests().size(), target == "/again" ? 6u : 1u) << target;
    }
}

TEST(CurlHttp, TransportFailuresNameTheHostAndNoSecret) {
    const HttpLimits limits{.silence = std::chrono::seconds(1), .replyBytes = 1000};
    const struct {
        LoopbackServer::Answer answer;
        const char16_t* expected;
    } cases[] = {
        {always(""), u""},                                                            // closes
        {always("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\ncut"), u""},           // closes too soon
        {[](const std::string&) { return std::nullopt; }, u"no byte moved for 1 s"},  // hangs
        {always(httpReply("200 OK", "", std::string(1001, 'x'))), u"larger than 1000 bytes"},
    };
    for (const auto& c : cases) {
        LoopbackServer server(c.answer);
        const auto error = testing::errorOf([&] {
            CurlHttp(limits).post(u"http://user:secret@" + server.address() + u"/?key=hidden", "text/xml", "<a/>");
        });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->number(), 440);
        EXPECT_EQ(error->source(), u"Quill1XML");
        EXPECT_THAT(error->what(), AllOf(HasSubstr("127.0.0.1"), Not(HasSubstr("secret")), Not(HasSubstr("hidden"))));
        EXPECT_NE(error->description().find(c.expected), std::u16string::npos) << error->what();
    }
    LoopbackServer full(always(httpReply("200 OK", "", std::string(1000, 'x'))));
    EXPECT_EQ(CurlHttp(limits).post(u"http://" + full.address(), "text/xml", "<a/>").body.size(), 1000u);

    std::u16string closed;
    {
        const LoopbackServer gone(always(""));
        closed = gone.address();
    }
    expectError([&] { CurlHttp().post(u"http://" + closed, "text/xml", "<a/>"); }, 440, u"127.0.0.1: ");
}

TEST(CurlHttp, OtherUrlsAreInvalidArguments) {
    for (const Text url :
         {u"", u"store.example.com/in", u"ftp://store.example.com", u"file:///etc/passwd", u"http://", u"C:\\store"}) {
        expectError([&] { CurlHttp().post(url, "text/xml", "<a/>"); }, 5, u"http://");
    }
}

}  // namespace
}  // namespace quill1xml::platform
