#include "command_line/exchange_log.hpp"

#include <nlohmann/json.hpp>

#include <array>
#include <cerrno>
#include <ctime>
#include <ios>
#include <system_error>
#include <utility>

namespace quill1xml::cli {
namespace {

using nlohmann::ordered_json;

/// "2024-01-31T14:25:09.123Z"
std::string isoTime(std::chrono::system_clock::time_point time) {
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch());
    const auto seconds = std::chrono::floor<std::chrono::seconds>(milliseconds);
    const auto whole = static_cast<std::time_t>(seconds.count());
    std::tm parts{};
    std::array<char, 32> text{};
    gmtime_r(&whole, &parts);
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S.", &parts);
    const std::string fraction = std::to_string((milliseconds - seconds).count());
    return text.data() + std::string(3 - fraction.size(), '0') + fraction + "Z";
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
    file_.open(file, std::ios::app);
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
