#include "command_line/exchanges.hpp"

#include "command_line/harmless_text.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"
#include "text/url.hpp"

#include <chrono>
#include <memory>
#include <utility>

namespace quill1xml::cli {
namespace {

using Clock = std::chrono::steady_clock;

std::string lineOf(const Exchange& exchange) {
    std::string line = exchange.packet.empty() ? exchange.kind : excerpt(exchange.packet);
    line += ": " + std::to_string(exchange.bytes) + " bytes in " + std::to_string(exchange.took.count()) + " ms, ";
    if (exchange.receipt) return line + "import " + std::to_string(*exchange.receipt);
    return line + (exchange.status == 0 ? "no answer" : "HTTP " + std::to_string(exchange.status));
}

}  // namespace

class Exchanges::WatchedHttp final : public ports::Http {
public:
    WatchedHttp(std::shared_ptr<ports::Http> http, Exchanges& exchanges)
        : http_(std::move(http)), exchanges_(exchanges) {}

    ports::HttpReply post(Text url, std::string_view contentType, std::string_view body) override {
        Exchange exchange{.kind = exchanges_.method_, .bytes = body.size()};
        if (exchanges_.store_ != nullptr) exchange.packet = toUtf8(exchanges_.store_->underWay().packet);
        return exchanges_.watch(std::move(exchange), url, [&] { return http_->post(url, contentType, body); });
    }

    ports::HttpReply get(Text url, const ports::Validators& known) override {
        return exchanges_.watch({.kind = "schema"}, url, [&] { return http_->get(url, known); });
    }

private:
    std::shared_ptr<ports::Http> http_;
    Exchanges& exchanges_;
};

Exchanges::Exchanges(ports::Environment environment, Progress& progress, const ExchangeReport& report)
    : environment_(std::move(environment)), progress_(progress), verbose_(report.verbose), log_(report.log) {
    environment_.http = std::make_shared<WatchedHttp>(std::move(environment_.http), *this);
    warnOfLog();
}

ports::HttpReply Exchanges::watch(Exchange exchange, Text url, const std::function<ports::HttpReply()>& make) {
    settle();
    if (isHttpUrl(url)) exchange.url = toUtf8(printableUrl(url));
    exchange.time = std::chrono::system_clock::now();
    const Clock::time_point start = Clock::now();
    const auto keep = [&] {
        exchange.took = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
        kept_ = std::move(exchange);
        progress_.waiting({});
    };
    try {
        ports::HttpReply reply = make();
        exchange.status = reply.status;
        keep();
        return reply;
    } catch (const Error& error) {
        // What is no URL may hold a password anywhere.
        const bool isUrl = error.number() != static_cast<Long>(RuntimeError::invalidProcedureCall);
        if (!isUrl) exchange.url.clear();
        transportFailed_ = isUrl;
        keep();
        throw;
    }
}

void Exchanges::accepted(Long importNumber) {
    if (kept_) kept_->receipt = importNumber;
    settle();
}

void Exchanges::fail(const std::exception& error) {
    // An image that cannot be read is not the fault of the one that was sent before it.
    const bool over = kept_ && kept_->packet.empty() && kept_->status != 0 && !store_->underWay().answered;
    if (kept_ && !over) kept_->error = error.what();
    settle();
}

void Exchanges::settle() {
    if (!kept_) return;
    const Exchange exchange = *std::exchange(kept_, std::nullopt);
    if (verbose_) progress_.print(lineOf(exchange));
    log_.write(exchange);
    warnOfLog();
}

void Exchanges::warnOfLog() {
    if (const std::string failure = log_.failure(); !failure.empty()) progress_.print("warning: " + failure);
}

}  // namespace quill1xml::cli
