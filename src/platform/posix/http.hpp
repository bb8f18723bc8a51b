// HTTP over libcurl.
#pragma once

#include "platform/ports.hpp"
#include "quill1xml/limits.hpp"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace quill1xml::platform {

/// When a transfer is given up.
struct HttpLimits {
    std::chrono::seconds connect{30};                ///< until the connection stands
    std::chrono::seconds silence = limits::silence;  ///< without a byte in either direction
    /// Of all that comes in, headers and redirects too.
    std::size_t replyBytes = limits::replyMiB * limits::bytesInMiB;
    std::string authorities{};  ///< a file of the certificates to trust; the system's when empty
};

/// How much of a request went out.
struct Delivery;

/// Serves one thread. Connections are kept while they stay open: a post on one that the server closed meanwhile is
/// sent again only where the server's system took nothing of it.
/// Speaks HTTP and HTTPS alone and checks certificates. Follows few redirects, and only to the same host and port
/// or from http to https of the same host.
class CurlHttp final : public Http {
public:
    explicit CurlHttp(HttpLimits limits = {});

    HttpReply post(Text url, std::string_view contentType, std::string_view body) override;

    HttpReply get(Text url, const Validators& known) override;

private:
    HttpReply transfer(Text address, const std::function<void(void* handle)>& prepare);

    HttpLimits limits_;
    std::shared_ptr<Delivery> delivery_;  ///< outlives the connections, which tell it when they close
    std::shared_ptr<void> handle_;  ///< the library's; it keeps connections and TLS sessions from request to request
};

}  // namespace quill1xml::platform
