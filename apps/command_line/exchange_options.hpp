// The options of every command that exchanges something with a server.
#pragma once

#include "command_line/exchanges.hpp"
#include "quill1xml/http.hpp"
#include "quill1xml/limits.hpp"

#include <CLI/CLI.hpp>

#include <cstddef>
#include <functional>

namespace quill1xml::cli {

struct ExchangeOptions {
    Long silence = static_cast<Long>(limits::silence.count());  ///< in seconds
    std::size_t maxReply = limits::replyMiB;                    ///< in MiB
    std::string authorities{};                                  ///< a file; the system's when empty
    ExchangeReport report{};
};

/// Adds how far an exchange may go, where the system lets that be said.
void addExchangeLimits(CLI::App& command, ExchangeOptions& options);

void addExchange(CLI::App& command, ExchangeOptions& options);

/// Does a command's work with the system's environment under these options. Returns what the work returns.
int withExchanges(const ExchangeOptions& options, const std::function<int(Exchanges& exchanges)>& work);

}  // namespace quill1xml::cli
