#include "support/loopback_server.hpp"

#include "quill1xml/text.hpp"

#include <cstdlib>
#include <stdexcept>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quill1xml::testing {
namespace {

void require(bool done, const char* what) {
    if (!done) throw std::runtime_error(what);
}

/// The request, as far as its Content-Length says.
std::string receive(int connection) {
    std::string request;
    char buffer[65536];
    while (true) {
        const std::size_t head = request.find("\r\n\r\n");
        if (head != std::string::npos) {
            const std::size_t length = request.find("Content-Length: ");
            const std::size_t body = length > head ? 0 : std::stoul(request.substr(length + 16));
            if (request.size() >= head + 4 + body) return request;
        }
        const ssize_t count = recv(connection, buffer, sizeof buffer, 0);
        if (count <= 0) return request;
        request.append(buffer, static_cast<std::size_t>(count));
    }
}

void send(int connection, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) return;  // the client went away
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

}  // namespace

LoopbackServer::LoopbackServer(Answer answer, int requestsEach)
    : answer_(std::move(answer)),
      requestsEach_(requestsEach),
      listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    setenv("no_proxy", "*", 1);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    require(bind(listener_, generic, size) == 0, "bind");
    require(listen(listener_, SOMAXCONN) == 0, "listen");
    require(getsockname(listener_, generic, &size) == 0, "getsockname");
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
}

LoopbackServer::~LoopbackServer() {
    shutdown(listener_, SHUT_RDWR);  // ends accept
    thread_.join();
    close(listener_);
    for (const int connection : silent_) close(connection);
}

std::u16string LoopbackServer::address() const { return toUtf16("127.0.0.1:" + std::to_string(port_)); }

std::vector<std::string> LoopbackServer::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

bool LoopbackServer::answer(int connection) {
    const std::string request = receive(connection);
    if (request.empty()) return true;  // the client went away
    {
        const std::lock_guard lock(mutex_);
        requests_.push_back(request);
    }
    const auto reply = answer_(request);
    if (reply) send(connection, *reply);
    return reply.has_value();
}

void LoopbackServer::serve() {
    int connection = 0;
    while ((connection = accept(listener_, nullptr, nullptr)) != -1) {
        bool open = true;
        for (int i = 0; open && i < requestsEach_; ++i) open = answer(connection);
        if (open) {
            close(connection);
        } else {
            silent_.push_back(connection);
        }
    }
}

std::string httpReply(const std::string& status, const std::string& headers, const std::string& body) {
    return "HTTP/1.1 " + status + "\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" +
           headers + "\r\n" + body;
}

}  // namespace quill1xml::testing
