#include "command_line/error_text.hpp"

#include "command_line/harmless_text.hpp"

namespace quill1xml::cli {
namespace {

constexpr Text lineBreak = u"\r\n";
constexpr std::size_t longestLine = 1000;

}  // namespace

std::string errorText(const Error& error) {
    const Text description = error.description();
    return "error " + std::to_string(error.number()) + " (" + excerpt(error.source()) +
           "): " + (description.starts_with(u"Server: ") ? excerpt(description) : messageLines(description));
}

std::string errorText(const Error& error, Text account) {
    const std::string text = errorText(error);
    return account.empty() || account == error.description() ? text : text + "\n    " + messageLines(account);
}

std::string messageLines(Text message) {
    std::string lines;
    for (std::size_t end = 0; (end = message.find(lineBreak)) != Text::npos;) {
        lines += harmless(message.substr(0, end), longestLine) + "\r\n    ";
        message.remove_prefix(end + lineBreak.size());
    }
    return lines + harmless(message, longestLine);
}

}  // namespace quill1xml::cli
