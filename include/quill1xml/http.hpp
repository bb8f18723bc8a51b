// The library's own HTTP client, for hosts that set its limits: environment.http = systemHttp({...}).
#pragma once

#include "quill1xml/limits.hpp"
#include "quill1xml/ports.hpp"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace quill1xml::ports {

/// A server that an exchange waits for.
struct Waiting {
    Text host{};
    std::chrono::seconds silent{0};  ///< since the last byte; 0 when something moves again
    std::chrono::seconds limit{0};   ///< of that silence: then the exchange fails
};

/// When an exchange is given up, and whom it trusts. On Windows the system's client has limits, certificates and
/// patience of its own, and these options are ignored.
struct HttpOptions {
    std::chrono::seconds connect = limits::connect;  ///< until the connection stands; at least 1 s
    std::chrono::seconds silence = limits::silence;  ///< without a byte in either direction; at least 1 s
    /// Of all that comes in, headers and redirects too.
    std::size_t replyBytes = limits::replyMiB * limits::bytesInMiB;
    std::string authorities{};  ///< a PEM file of the only authorities to trust; the system's when empty
    /// Called about once a second while no byte moves, and once when one does again, on the thread of the exchange.
    /// What it throws is passed over.
    std::function<void(const Waiting& waiting)> waiting{};
};

/// A client with these options; it serves one thread.
std::shared_ptr<Http> systemHttp(const HttpOptions& options);

}  // namespace quill1xml::ports
