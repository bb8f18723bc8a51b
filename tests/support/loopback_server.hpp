// An HTTP server on the loopback interface whose replies a test writes byte by byte.
#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace quill1xml::testing {

/// Serves one connection after the other, a number of requests on each.
class LoopbackServer {
public:
    /// The bytes to send before closing; nothing to fall silent instead.
    using Answer = std::function<std::optional<std::string>(const std::string& request)>;

    explicit LoopbackServer(Answer answer, int requestsEach = 1);
    ~LoopbackServer();

    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    /// "127.0.0.1:<port>"
    std::u16string address() const;

    /// The requests so far, each with its head and body.
    std::vector<std::string> requests() const;

private:
    void serve();

    /// Answers a request; false when the connection is to stay open without an answer.
    bool answer(int connection);

    Answer answer_;
    int requestsEach_;
    int listener_;
    int port_ = 0;
    std::vector<int> silent_;
    mutable std::mutex mutex_;
    std::vector<std::string> requests_;
    std::thread thread_;
};

/// A reply with its length and a connection that closes. The status line leaves "HTTP/1.1 " out.
std::string httpReply(const std::string& status, const std::string& headers, const std::string& body);

}  // namespace quill1xml::testing
