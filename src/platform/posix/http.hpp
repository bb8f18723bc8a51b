// HTTP over libcurl.
#pragma once

#include "platform/ports.hpp"
#include "quill1xml/http.hpp"

#include <functional>
#include <memory>
#include <string_view>

namespace quill1xml::platform {

/// How much of a request went out.
struct Delivery;

/// Serves one thread. Connections are kept while they stay open: a post on one that the server closed meanwhile is
/// sent again only where the server's system took nothing of it.
/// Speaks HTTP and HTTPS alone and checks certificates. Follows few redirects, and only to the same host and port
/// or from http to https of the same host.
class CurlHttp final : public Http {
public:
    explicit CurlHttp(ports::HttpOptions options = {});

    HttpReply post(Text url, std::string_view contentType, std::string_view body) override;

    HttpReply get(Text url, const Validators& known) override;

private:
    HttpReply transfer(Text address, const std::function<void(void* handle)>& prepare);

    ports::HttpOptions options_;
    std::shared_ptr<Delivery> delivery_;  ///< outlives the connections, which tell it when they close
    std::shared_ptr<void> handle_;  ///< the library's; it keeps connections and TLS sessions from request to request
};

}  // namespace quill1xml::platform
