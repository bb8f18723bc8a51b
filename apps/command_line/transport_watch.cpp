#include "command_line/transport_watch.hpp"

#include <utility>

namespace quill1xml::cli {
namespace {

class Watch final : public ports::Http {
public:
    Watch(std::shared_ptr<ports::Http> http, bool& failed) : http_(std::move(http)), failed_(failed) {}

    ports::HttpReply post(Text url, std::string_view contentType, std::string_view body) override {
        return watch([&] { return http_->post(url, contentType, body); });
    }

    ports::HttpReply get(Text url, const ports::Validators& known) override {
        return watch([&] { return http_->get(url, known); });
    }

private:
    template <class Exchange>
    ports::HttpReply watch(Exchange exchange) {
        try {
            return exchange();
        } catch (const Error&) {
            failed_ = true;
            throw;
        }
    }

    std::shared_ptr<ports::Http> http_;
    bool& failed_;
};

}  // namespace

ports::Environment watched(ports::Environment environment, bool& failed) {
    environment.http = std::make_shared<Watch>(std::move(environment.http), failed);
    return environment;
}

}  // namespace quill1xml::cli
