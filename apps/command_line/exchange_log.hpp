// The log of exchanges with servers: one JSON object a line, appended to a file.
#pragma once

#include "quill1xml/types.hpp"

#include <chrono>
#include <cstddef>
#include <fstream>
#include <optional>
#include <string>

namespace quill1xml::cli {

/// One request, and what came of it. All texts are UTF-8.
struct Exchange {
    std::chrono::system_clock::time_point time{};
    std::string kind{};     ///< the method that is called, or "schema"
    std::string url{};      ///< without credentials; empty when it is none
    std::string packet{};   ///< the packet file; empty when something else is sent
    std::size_t bytes = 0;  ///< of the body
    std::chrono::milliseconds took{0};
    int status = 0;                 ///< of HTTP; 0 when there is no answer
    std::optional<Long> receipt{};  ///< the import number
    std::string error{};            ///< of the call, when it failed over this exchange
};

class ExchangeLog {
public:
    /// Opens the file to append to it; no log with an empty name.
    explicit ExchangeLog(const std::string& file);

    /// Nothing is written any more once that has failed.
    void write(const Exchange& exchange);

    /// Why the log cannot be written, once; empty otherwise.
    std::string failure();

private:
    void noteFailure();

    std::string name_;
    std::ofstream file_;
    std::string failure_;
};

}  // namespace quill1xml::cli
