// HTTP over libcurl.
#pragma once

#include "platform/ports.hpp"

#include <chrono>
#include <cstddef>
#include <functional>

namespace quill1xml::platform {

/// When a transfer is given up.
struct HttpLimits {
    std::chrono::seconds connect{30};             ///< until the connection stands
    std::chrono::seconds silence{300};            ///< without a byte in either direction
    std::size_t replyBytes = 256u * 1024 * 1024;  ///< of all that comes in, headers and redirects too
};

/// Speaks HTTP and HTTPS alone and checks certificates. Follows at most 5 redirects, and only to the same host and port
/// or from http to https of the same host.
class CurlHttp final : public Http {
public:
    explicit CurlHttp(HttpLimits limits = {});

    HttpReply post(Text url, std::string_view contentType, std::string_view body) override;

    HttpReply get(Text url, const Validators& known) override;

private:
    HttpReply transfer(Text address, const std::function<void(void* handle)>& prepare);

    HttpLimits limits_;
};

}  // namespace quill1xml::platform
