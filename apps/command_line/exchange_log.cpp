#include "command_line/exchange_log.hpp"

#include "command_line/paths.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>
#include <ios>
#include <system_error>
#include <utility>

namespace quill1xml::cli {
namespace {

using nlohmann::ordered_json;

/// "2024-01-31T14:25:09.123Z"
std::string isoTime(std::chrono::system_clock::time_point time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(std::chrono::floor<std::chrono::milliseconds>(time - day));
    const auto digits = [](auto number, std::size_t width) {
        const std::string text = std::to_string(number);
        return std::string(width - std::min(width, text.size()), '0') + text;
    };
    return digits(static_cast<int>(date.year()), 4) + '-' + digits(static_cast<unsigned>(date.month()), 2) + '-' +
           digits(static_cast<unsigned>(date.day()), 2) + 'T' + digits(clock.hours().count(), 2) + ':' +
           digits(clock.minutes().count(), 2) + ':' + digits(clock.seconds().count(), 2) + '.' +
           digits(clock.subseconds().count(), 3) + 'Z';
}

std::string lineOf(const Exchange& exchange) {
    ordered_json line{{"time", isoTime(exchange.time)}, {"kind", exchange.kind}};
    const auto given = [&line](const char* name, const std::string& text) {
        if (!text.empty()) line[name] = text;
    };
    given("url", exchange.url);
    given("packet", exchange.packet);
    line["bytes"] = exchange.bytes;
    line["milliseconds"] = exchange.took.count();
    if (exchange.status != 0) line["status"] = exchange.status;
    if (exchange.receipt) line["receipt"] = *exchange.receipt;
    given("error", exchange.error);
    return line.dump(-1, ' ', true, ordered_json::error_handler_t::replace) + '\n';
}

}  // namespace

ExchangeLog::ExchangeLog(const std::string& file) : name_(file) {
    if (file.empty()) return;
    file_.open(pathOf(file), std::ios::app | std::ios::binary);
    if (!file_) noteFailure();
}

void ExchangeLog::write(const Exchange& exchange) {
    if (!file_.is_open() || !file_) return;
    if (!(file_ << lineOf(exchange) << std::flush)) noteFailure();
}

std::string ExchangeLog::failure() { return std::exchange(failure_, {}); }

void ExchangeLog::noteFailure() {
    failure_ = "the log " + name_ + " cannot be written: " + std::generic_category().message(errno);
}

}  // namespace quill1xml::cli
