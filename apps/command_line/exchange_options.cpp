#include "command_line/exchange_options.hpp"

#include "command_line/terminal.hpp"

#include <chrono>
#include <iostream>
#include <utility>

namespace quill1xml::cli {

void addExchange(CLI::App& command, ExchangeOptions& options) {
    addExchangeLimits(command, options);
    command.add_option("--log", options.report.log, "Append each exchange to this file, as a line of JSON")
        ->type_name("FILE");
    command.add_flag("--verbose", options.report.verbose, "Tell each exchange on standard error");
}

int withExchanges(const ExchangeOptions& options, const std::function<int(Exchanges& exchanges)>& work) {
    Progress progress(std::cerr, errorOutputIsTerminal());
    ports::Environment environment = ports::systemEnvironment();
    environment.http =
        ports::systemHttp({.silence = std::chrono::seconds(options.silence),
                           .replyBytes = options.maxReply * limits::bytesInMiB,
                           .authorities = options.authorities,
                           .waiting = [&progress](const ports::Waiting& wait) { progress.waiting(wait); }});
    Exchanges exchanges(std::move(environment), progress, options.report);
    return work(exchanges);
}

}  // namespace quill1xml::cli
