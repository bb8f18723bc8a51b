#include "command_line/json_fault.hpp"

#include "command_line/harmless_text.hpp"

#include <string_view>

namespace quill1xml::cli {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Whether the text ends in the likes of "12,5": a comma between digits is no JSON.
bool endsInDecimalComma(std::string_view text) {
    std::size_t end = text.size();
    while (end > 0 && isDigit(text[end - 1])) --end;
    return end < text.size() && end > 1 && text[end - 1] == ',' && isDigit(text[end - 2]);
}

/// What the parser says behind its own name and the place, which it counts in a line of its own.
std::string_view reasonOf(std::string_view what) {
    const std::size_t place = what.find(", column ");
    const std::size_t begin =
        what.find(place == std::string_view::npos ? "] " : ": ", place == std::string_view::npos ? 0 : place);
    return begin == std::string_view::npos ? what : what.substr(begin + 2);
}

std::string_view adviceOn(std::string_view line, std::string_view what, std::size_t place) {
    if (line.starts_with("\xFF\xFE") || line.starts_with("\xFE\xFF")) return "the file is not UTF-8 but UTF-16";
    if (what.find("ill-formed UTF-8") != std::string_view::npos) return "the file is not UTF-8";
    if (endsInDecimalComma(line.substr(0, place))) return "numbers take a point";
    if (what.find("after backslash") != std::string_view::npos) return "a backslash is written twice";
    return {};
}

}  // namespace

std::string faultText(const std::string& line, const nlohmann::json::exception& error) {
    const std::string_view what = error.what();
    const auto* const parsing = dynamic_cast<const nlohmann::json::parse_error*>(&error);
    const std::size_t place = parsing == nullptr ? 0 : parsing->byte;
    std::string text = "not JSON";
    if (place > 0) text += " at byte " + std::to_string(place);
    const std::string_view advice = adviceOn(line, what, place);
    return text + ": " + (advice.empty() ? excerpt(reasonOf(what)) : std::string(advice));
}

}  // namespace quill1xml::cli
