#include "command_line/trial_environment.hpp"

#include <utility>

namespace quill1xml::cli {
namespace {

class NoHttp final : public ports::Http {
public:
    ports::HttpReply post(Text url, std::string_view, std::string_view) override { refuse(url); }
    ports::HttpReply get(Text url, const ports::Validators&) override { refuse(url); }

private:
    [[noreturn]] static void refuse(Text url) {
        throw runtimeError(RuntimeError::permissionDenied, u"nothing leaves this machine: " + std::u16string(url));
    }
};

class NoLog final : public ports::EventLog {
public:
    void writeError(Text) noexcept override {}
};

}  // namespace

ports::Environment trialEnvironment(const ports::Environment& real, std::shared_ptr<TrialFiles> files) {
    ports::Environment environment = real;
    environment.files = std::move(files);
    environment.http = std::make_shared<NoHttp>();
    environment.log = std::make_shared<NoLog>();
    return environment;
}

}  // namespace quill1xml::cli
