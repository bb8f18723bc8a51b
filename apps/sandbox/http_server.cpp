#include "http_server.hpp"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <string_view>

namespace quill1xml::sandbox {
namespace {

constexpr int transferTimeoutMilliseconds = 5000;
constexpr int idleTimeoutMilliseconds = 5000;
constexpr int idleSliceMilliseconds = 50;
constexpr std::size_t mostRequestsPerConnection = 1'000'000;

bool ready(int socket, short events, int milliseconds) {
    pollfd entry{socket, events, 0};
    int result = 0;
    do result = poll(&entry, 1, milliseconds);
    while (result < 0 && errno == EINTR);
    return result > 0;
}

/// One connection. What is written stays here until flush, or until the peer is to send more.
class Connection : public httplib::Stream {
public:
    explicit Connection(int socket) : socket_(socket) {}
    ~Connection() override {
        shutdown(socket_, SHUT_RDWR);
        close(socket_);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Whether a request, or the end of the connection, can be read within the time.
    bool waitForData(int milliseconds) const { return !input().empty() || ready(socket_, POLLIN, milliseconds); }

    bool flush() {
        std::string_view rest = output_;
        while (!rest.empty()) {
            if (!ready(socket_, POLLOUT, transferTimeoutMilliseconds)) return false;
            const ssize_t sent = send(socket_, rest.data(), rest.size(), MSG_NOSIGNAL);
            if (sent < 0 && errno != EINTR) return false;
            if (sent > 0) rest.remove_prefix(static_cast<std::size_t>(sent));
        }
        output_.clear();
        return true;
    }

    bool is_readable() const override { return waitForData(transferTimeoutMilliseconds); }
    bool is_writable() const override { return true; }

    ssize_t read(char* data, std::size_t size) override {
        if (input().empty()) {
            if (!flush() || !is_readable()) return -1;
            const ssize_t received = recv(socket_, buffer_.data(), buffer_.size(), 0);
            if (received <= 0) return received;
            begin_ = 0;
            end_ = static_cast<std::size_t>(received);
        }
        const std::size_t count = input().copy(data, size);
        begin_ += count;
        return static_cast<ssize_t>(count);
    }

    ssize_t write(const char* data, std::size_t size) override {
        output_.append(data, size);
        return static_cast<ssize_t>(size);
    }

    // Nobody asks for the addresses: both ends are on this machine.
    void get_remote_ip_and_port(std::string&, int&) const override {}
    void get_local_ip_and_port(std::string&, int&) const override {}
    socket_t socket() const override { return socket_; }

private:
    std::string_view input() const { return {buffer_.data() + begin_, end_ - begin_}; }

    int socket_;
    std::array<char, 16384> buffer_{};
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::string output_;
};

}  // namespace

HttpServer::HttpServer() {
    set_tcp_nodelay(true);
    set_keep_alive_max_count(mostRequestsPerConnection);
    // The library's own choice, SO_REUSEPORT, would share the port with another server.
    set_socket_options([](socket_t socket) {
        const int on = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    });
}

bool HttpServer::process_and_close_socket(socket_t socket) {
    Connection connection(socket);
    bool last = false;
    int idle = 0;
    while (!last && idle < idleTimeoutMilliseconds && svr_sock_ != INVALID_SOCKET) {
        if (!connection.waitForData(idleSliceMilliseconds)) {
            idle += idleSliceMilliseconds;
            continue;
        }
        idle = 0;
        if (!process_request(connection, false, last, nullptr) || !connection.flush()) return false;
    }
    return true;
}

}  // namespace quill1xml::sandbox
