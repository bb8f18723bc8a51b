#include "platform/posix/http.hpp"
#include "quill1xml/text.hpp"
#include "support/expect_error.hpp"
#include "support/loopback_server.hpp"
#include "support/temp_folder.hpp"
#include "support/text_printer.hpp"

#include <gmock/gmock.h>
#include <httplib.h>

#include <cstdlib>
#include <set>
#include <stdexcept>
#include <thread>

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
    } cases[] = {{"301 Moved", "POST"},
                 {"302 Found", "POST"},
                 {"307 Moved", "POST"},
                 {"308 Moved", "POST"},
                 {"303 See Other", "GET"}};
    for (const auto& c : cases) {
        LoopbackServer server([&](const std::string& request) {
            return request.find(" /new ") == std::string::npos ? httpReply(c.status, "Location: /new\r\n", "moved")
                                                               : httpReply("200 OK", "", "done");
        });
        EXPECT_EQ(CurlHttp().post(u"http://u:pass@" + server.address() + u"/old", "text/xml", "<a/>").body, "done");
        ASSERT_EQ(server.requests().size(), 2u);
        EXPECT_THAT(server.requests()[1], HasSubstr("\r\nAuthorization: Basic dTpwYXNz\r\n"));
        EXPECT_THAT(server.requests()[1], StartsWith(c.method + " /new"));
        EXPECT_EQ(server.requests()[1].ends_with("<a/>"), c.method == "POST");
    }
}

TEST(CurlHttp, RedirectsAreFewAndStayWithTheHost) {
    LoopbackServer other(always(httpReply("200 OK", "", "mine")));
    const std::string elsewhere = "http://" + testing::utf8(other.address());
    const struct {
        std::string target;
        std::u16string expected;
    } cases[] = {{"/again", u"127.0.0.1: the server redirects more than 5 times"},
                 {elsewhere + "/in", other.address()},
                 {"http://localhost/", u"redirects to http://localhost:80, "},
                 {"file:///etc/passwd", u"redirects to file://"},
                 {"ftp://127.0.0.1/", u"redirects to ftp://127.0.0.1:21"}};
    for (const auto& c : cases) {
        for (const std::string status : {"301 Moved", "303 See Other", "307 Moved"}) {
            LoopbackServer server(always(httpReply(status, "Location: " + c.target + "\r\n", "")));
            const std::u16string url = u"http://user:secret@" + server.address();
            expectError([&] { CurlHttp().post(url, "text/xml", "<a/>"); }, 440, c.expected);
            expectError([&] { CurlHttp().get(url, {}); }, 440, c.expected);
            EXPECT_EQ(server.requests().size(), c.target == "/again" ? 12u : 2u) << c.target;
        }
    }
    EXPECT_TRUE(other.requests().empty());
}

TEST(CurlHttp, AsksWhetherADocumentChanged) {
    const std::string changed = "Mon, 05 Mar 2007 14:07:09 GMT";
    LoopbackServer server([&](const std::string& request) {
        return request.find("If-") == std::string::npos
                   ? httpReply("200 OK", "ETag: \"v1\"\r\nLast-Modified: " + changed + "\r\n", "<a/>")
                   : httpReply("304 Not Modified", "", "");
    });
    CurlHttp http;
    const std::u16string url = u"http://" + server.address();
    EXPECT_EQ(http.post(url, "text/xml", "<b/>").body, "<a/>");
    const HttpReply first = http.get(url, {});
    EXPECT_EQ(first.validators.entityTag, "\"v1\"");
    EXPECT_EQ(first.validators.lastModified, changed);
    EXPECT_EQ(http.get(url, first.validators).status, 304);
    EXPECT_EQ(http.get(url, {.lastModified = changed}).status, 304);
    const auto requests = server.requests();
    ASSERT_EQ(requests.size(), 4u);
    EXPECT_THAT(requests[1], AllOf(StartsWith("GET / "), Not(HasSubstr("text/xml")), EndsWith("\r\n\r\n")));
    EXPECT_THAT(requests[2],
                AllOf(HasSubstr("If-None-Match: \"v1\"\r\n"), HasSubstr("If-Modified-Since: " + changed + "\r\n")));
    EXPECT_THAT(requests[3], Not(HasSubstr("If-None-Match")));
}

TEST(CurlHttp, TransportFailuresNameTheHostAndNoSecret) {
    std::vector<std::string> waited;
    const ports::HttpOptions limits{.connect = std::chrono::seconds(9),
                                    .silence = std::chrono::seconds(1),
                                    .replyBytes = 2000,
                                    .waiting = [&](const ports::Waiting& w) {
                                        waited.push_back(toUtf8(w.host) + " " + std::to_string(w.silent.count()) + "/" +
                                                         std::to_string(w.limit.count()));
                                        throw std::runtime_error("passed over");
                                    }};
    const struct {
        LoopbackServer::Answer answer;
        const char16_t* expected;
    } cases[] = {
        {always(""), u""},                                                            // closes
        {always("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\ncut"), u""},           // closes too soon
        {[](const std::string&) { return std::nullopt; }, u"no byte moved for 1 s"},  // hangs
        {always(httpReply("200 OK", "", std::string(2000, 'x'))), u"larger than 2000 bytes"},
        {always(httpReply("200 OK", "X: " + std::string(2000, 'x') + "\r\n", "")), u"larger than 2000 bytes"},
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
    EXPECT_THAT(waited, ::testing::ElementsAre("127.0.0.1 1/1"));
    LoopbackServer full(always(httpReply("200 OK", "", std::string(1900, 'x'))));
    EXPECT_EQ(CurlHttp(limits).post(u"http://" + full.address(), "text/xml", "<a/>").body.size(), 1900u);
    std::string trailers = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n";
    for (int i = 0; i < 400; ++i) trailers += "X: " + std::string(3000, 'x') + "\r\n";
    LoopbackServer chatty(always(trailers + "\r\n"));
    expectError([&] { CurlHttp().get(u"http://" + chatty.address(), {}); }, 440, u"headers of the reply are larger");

    std::u16string closed;
    {
        const LoopbackServer gone(always(""));
        closed = gone.address();
    }
    expectError([&] { CurlHttp().post(u"http://" + closed, "text/xml", "<a/>"); }, 440, u"127.0.0.1: ");
    EXPECT_THROW(CurlHttp().post(u"http://" + closed, "text/xml", "<a/>"), ports::NotReached);
}

TEST(CurlHttp, OtherUrlsAreInvalidArguments) {
    for (const Text url :
         {u"", u"store.example.com/in", u"ftp://store.example.com", u"file:///etc/passwd", u"http://", u"C:\\store"}) {
        expectError([&] { CurlHttp().post(url, "text/xml", "<a/>"); }, 5, u"http://");
    }
}

TEST(CurlHttp, AConnectionThatTheServerClosesMeanwhileIsNoFailure) {
    // The reply promises to stay, the server goes.
    LoopbackServer server(always("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n<a/>"));
    CurlHttp http;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(http.post(u"http://" + server.address(), "text/xml", "<b/>").body, "<a/>");
    EXPECT_EQ(server.requests().size(), 3u) << "nothing is posted twice";
}

TEST(CurlHttp, AConnectionThatEndsInTheMiddleOfAPostIsAFailureAndNothingIsPostedTwice) {
    const struct {
        std::string end;
        const char16_t* expected;
    } cases[] = {{"", u"whether it took the request is not known"},
                 {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n<", u""}};
    for (const auto& c : cases) {
        int answered = 0;
        LoopbackServer server(
            [&](const std::string&) {
                return answered++ == 0 ? "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n<a/>" : c.end;
            },
            2);
        CurlHttp http;
        const std::u16string url = u"http://" + server.address();
        EXPECT_EQ(http.post(url, "text/xml", "<b/>").body, "<a/>");
        expectError([&] { http.post(url, "text/xml", "<b/>"); }, 440, c.expected);
        EXPECT_EQ(server.requests().size(), 2u);
    }
}

/// Answers over TLS with a certificate for the address, which vouches for itself.
class TlsServer {
public:
    TlsServer() {
        const std::string command =
            "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
            "-subj /CN=test -addext subjectAltName=IP:127.0.0.1 -keyout " +
            file("key.pem") + " -out " + authority() + " 2>/dev/null";
        if (std::system(command.c_str()) != 0) throw std::runtime_error(command);
        server_.emplace(authority().c_str(), file("key.pem").c_str());
        server_->set_keep_alive_max_count(1000);
        server_->Post("/", [this](const httplib::Request& request, httplib::Response& response) {
            connections.insert(request.remote_port);
            response.set_content("<a/>", "text/xml");
        });
        port_ = server_->bind_to_any_port("127.0.0.1");
        thread_ = std::thread([this] { server_->listen_after_bind(); });
    }
    ~TlsServer() {
        server_->stop();
        thread_.join();
    }
    TlsServer(const TlsServer&) = delete;
    TlsServer& operator=(const TlsServer&) = delete;

    std::string authority() const { return file("certificate.pem"); }
    std::u16string url(const std::string& host) const {
        return toUtf16("https://" + host + ":" + std::to_string(port_));
    }

    std::set<int> connections;

private:
    std::string file(const char* name) const { return (folder_.path() / name).string(); }

    testing::TempFolder folder_;
    std::optional<httplib::SSLServer> server_;
    int port_ = 0;
    std::thread thread_;
};

TEST(CurlHttp, ManyPostsShakeHandsOnceAndOnlyWithWhomTheyTrust) {
    const TlsServer server;
    const ports::HttpOptions trusting{.authorities = server.authority()};
    CurlHttp http(trusting);
    for (int i = 0; i < 50; ++i) EXPECT_EQ(http.post(server.url("127.0.0.1"), "text/xml", "<b/>").body, "<a/>");
    EXPECT_EQ(server.connections.size(), 1u);

    expectError([&] { CurlHttp().post(server.url("127.0.0.1"), "text/xml", "<b/>"); }, 440, u"certificate");
    expectError([&] { http.post(server.url("localhost"), "text/xml", "<b/>"); }, 440, u"localhost: SSL: ");
    EXPECT_EQ(server.connections.size(), 1u);

    // Where no byte of the body has left nothing can have arrived.
    EXPECT_THROW(CurlHttp().post(server.url("127.0.0.1"), "text/xml", "<b/>"), ports::NotReached);
    // A shop that moved to the encrypted port of its host.
    const LoopbackServer moved(
        always(httpReply("301 Moved", "Location: " + testing::utf8(server.url("127.0.0.1")) + "/\r\n", "")));
    EXPECT_EQ(http.post(u"http://" + moved.address(), "text/xml", "<b/>").body, "<a/>");
}

}  // namespace
}  // namespace quill1xml::platform
