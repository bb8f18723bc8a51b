#include "answers.hpp"

#include "frame.hpp"
#include "image.hpp"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace quill1xml::sandbox {

void answerJson(httplib::Response& response, const Json& json, int status) {
    response.status = status;
    // Text that a client sent in another encoding must not keep the answer from going out.
    response.set_content(json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n', jsonType);
}

void answerPage(httplib::Response& response, const std::string& html, int status) {
    response.status = status;
    response.set_header("Content-Security-Policy",
                        "default-src 'none'; style-src 'unsafe-inline'; img-src 'self'; form-action 'self'; "
                        "base-uri 'none'; frame-ancestors 'none'");
    response.set_header("X-Content-Type-Options", "nosniff");
    response.set_header("Referrer-Policy", "no-referrer");
    response.set_content(html, "text/html; charset=utf-8");
}

void answerImage(httplib::Response& response, const std::string& bytes) {
    response.set_header("Content-Security-Policy", "default-src 'none'; sandbox");
    response.set_header("X-Content-Type-Options", "nosniff");
    response.set_content(bytes, imageType(bytes));
}

void answerError(const httplib::Request& request, httplib::Response& response, int status, const std::string& message) {
    if (wantsPage(request)) {
        answerPage(response, errorPage(status, message), status);
    } else {
        answerJson(response, {{"error", message}}, status);
    }
}

bool wantsPage(const httplib::Request& request) {
    return request.get_header_value("Accept").find("text/html") != std::string::npos;
}

std::optional<std::string> parameter(const httplib::Request& request, std::string_view name) {
    const auto found = request.params.find(std::string(name));
    return found == request.params.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::int64_t> numberParameter(const httplib::Request& request, const char* name) {
    const std::optional<std::string> text = parameter(request, name);
    if (!text) return std::nullopt;
    const std::optional<std::int64_t> number = wholeNumber(*text);
    if (!number) throw std::invalid_argument(std::string(name) + " must be a whole number");
    return number;
}

void allowParameters(const httplib::Request& request, std::span<const std::string_view> known) {
    for (const auto& [name, value] : request.params)
        if (std::ranges::find(known, name) == known.end())
            throw std::invalid_argument("Unknown parameter \"" + name + '"');
}

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && !text.empty() ? std::optional(number)
                                                                                     : std::nullopt;
}

}  // namespace quill1xml::sandbox
