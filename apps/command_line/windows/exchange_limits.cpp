#include "command_line/exchange_options.hpp"

namespace quill1xml::cli {

// The system's client has limits and certificates of its own: an option that it does not heed would be a false promise.
void addExchangeLimits(CLI::App&, ExchangeOptions&) {}

}  // namespace quill1xml::cli
