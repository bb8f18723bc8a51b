// What people see of exchanges with servers: progress, a line for each, and a log.
#pragma once

#include "command_line/exchange_log.hpp"
#include "command_line/progress.hpp"
#include "quill1xml/ports.hpp"
#include "quill1xml/store.hpp"

#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quill1xml::cli {

struct ExchangeReport {
    bool verbose = false;  ///< a line for each exchange, on the progress
    std::string log{};     ///< the file for them; empty for none
};

/// Watches the HTTP client of an environment. Stores with that client do not outlive it, and what they exchange goes
/// through during(); the progress outlives it.
class Exchanges {
public:
    Exchanges(ports::Environment environment, Progress& progress, const ExchangeReport& report = {});
    Exchanges(const Exchanges&) = delete;
    Exchanges& operator=(const Exchanges&) = delete;

    /// The environment, with the client that is watched.
    const ports::Environment& environment() const noexcept { return environment_; }

    Progress& progress() noexcept { return progress_; }

    /// Calls a method of a store; what it exchanges is told under the method's name.
    template <class Work>
    void during(const Store& store, std::string_view method, Work work) {
        store_ = &store;
        method_ = method;
        transportFailed_ = false;
        try {
            work();
            settle();
        } catch (const std::exception& error) {
            fail(error);
            throw;
        }
    }

    /// Whether the transport failed in the call that was made last, rather than what was transported.
    bool transportFailed() const noexcept { return transportFailed_; }

    /// The packet that was posted last was accepted.
    void accepted(Long importNumber);

private:
    class WatchedHttp;

    /// Makes an exchange, and keeps it until it is known what came of it.
    ports::HttpReply watch(Exchange exchange, Text url, const std::function<ports::HttpReply()>& make);

    void fail(const std::exception& error);

    /// Tells the exchange that is kept, as it stands.
    void settle();
    void warnOfLog();

    ports::Environment environment_;
    Progress& progress_;
    bool verbose_;
    ExchangeLog log_;
    const Store* store_ = nullptr;  ///< of the call that was made last
    std::string method_;
    std::optional<Exchange> kept_;
    bool transportFailed_ = false;
};

}  // namespace quill1xml::cli
