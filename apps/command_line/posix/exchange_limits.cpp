#include "command_line/exchange_options.hpp"

namespace quill1xml::cli {

void addExchangeLimits(CLI::App& command, ExchangeOptions& options) {
    constexpr Long longestSilence = 24 * 60 * 60;
    constexpr int largestReply = 1024 * 1024;
    command.add_option("--silence", options.silence, "Give an exchange up after so long without a byte")
        ->check(CLI::Range(1, longestSilence))
        ->capture_default_str()
        ->type_name("SECONDS");
    command.add_option("--max-reply", options.maxReply, "Give an exchange up when more comes in")
        ->check(CLI::Range(1, largestReply))
        ->capture_default_str()
        ->type_name("MIB");
    command.add_option("--ca-file", options.authorities, "Trust the certificate authorities in this PEM file alone")
        ->check(CLI::ExistingFile)
        ->type_name("FILE");
}

}  // namespace quill1xml::cli
