// HTTP for loopback, tuned for many small exchanges.
#pragma once

#include <httplib.h>

namespace quill1xml::sandbox {

/// Sends each answer in one write: header and body in two would cost a kept-alive client the delayed acknowledgement,
/// some 40 ms per request. An answer whose content provider fails is not sent at all: the connection just closes.
/// Connections that wait for a request end as soon as the server stops.
/// The port is its own: a second server on the same one does not start.
class HttpServer : public httplib::Server {
public:
    HttpServer();

private:
    bool process_and_close_socket(socket_t socket) override;
};

}  // namespace quill1xml::sandbox
