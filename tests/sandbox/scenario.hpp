// HTTP scenarios as data: each exchange stands with the reply it expects.
#pragma once

#include "sandbox/server.hpp"

#include <fnmatch.h>
#include <gtest/gtest.h>

#include <chrono>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

namespace quill1xml::sandbox {

/// A request and what comes back. JSON replies are compared as values, all others as text in which "*" stands for
/// anything. Times of the right form read "NOW".
struct Exchange {
    std::string request;  ///< "GET /path" as programs ask, "PAGE /path" as browsers do, or "POST /path"
    std::string body;
    int status;
    std::string reply;
};

struct Scenario {
    const char* name;
    std::vector<Exchange> exchanges;
};

inline std::string accepted(int number) {
    return "<Receipt ImportNumber=\"" + std::to_string(number) +
           "\"><Error Number=\"0\" Source=\"\" Description=\"\"/></Receipt>";
}

inline std::string refused(int number, const std::string& source, const std::string& description) {
    return "<Receipt><Error Number=\"" + std::to_string(number) + "\" Source=\"" + source + "\" Description=\"" +
           description + "\"/></Receipt>";
}

inline const std::string wrongLogin = refused(5, "Login", "Wrong user name or password.");

constexpr const char* sender = "<Envelope UserName='demo' Password='demo'/>";

/// A store document to upload.
inline std::string store(const std::string& content, int id = 57) {
    return "<Store xmlns='WebStore' StoreID='" + std::to_string(id) + "'>" + sender + content + "</Store>";
}

inline std::string withoutTimes(const std::string& text) {
    static const std::regex time(R"re((time": |DateCreated=)"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ?")re");
    return std::regex_replace(text, time, "$1\"NOW\"");
}

inline httplib::Result request(httplib::Client& client, const Exchange& exchange) {
    const std::size_t blank = exchange.request.find(' ');
    const std::string path = exchange.request.substr(blank + 1);
    if (exchange.request.starts_with("GET")) return client.Get(path.c_str());
    if (exchange.request.starts_with("PAGE")) return client.Get(path.c_str(), {{"Accept", "text/html,*/*;q=0.8"}});
    return client.Post(path.c_str(), exchange.body, "application/x-www-form-urlencoded");
}

inline void play(Server& server, const std::vector<Exchange>& exchanges) {
    httplib::Client client("127.0.0.1", server.port());
    client.set_keep_alive(true);
    client.set_tcp_nodelay(true);
    client.set_read_timeout(std::chrono::seconds(60));
    for (const Exchange& exchange : exchanges) {
        SCOPED_TRACE(exchange.request + '\n' + exchange.body.substr(0, 500));
        const httplib::Result result = request(client, exchange);
        ASSERT_TRUE(result) << httplib::to_string(result.error());
        EXPECT_EQ(result->status, exchange.status);
        const std::string reply = withoutTimes(result->body);
        if (result->get_header_value("Content-Type") == "application/json") {
            using Unordered = nlohmann::json;
            EXPECT_EQ(Unordered::parse(reply), Unordered::parse(exchange.reply, nullptr, false)) << reply;
        } else {
            EXPECT_EQ(fnmatch(exchange.reply.c_str(), reply.c_str(), 0), 0) << reply << "\nis not\n" << exchange.reply;
        }
    }
}

}  // namespace quill1xml::sandbox
