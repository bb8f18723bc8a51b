#include "text/declared_encoding.hpp"

#include <algorithm>

namespace quill1xml {
namespace {

constexpr std::string_view spaces = " \t\r\n";

std::string_view withoutSpace(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(spaces), text.size()));
    return text;
}

}  // namespace

std::string_view declaredEncoding(std::string_view document) {
    constexpr std::string_view keyword = "encoding";
    if (!document.starts_with("<?xml")) return {};
    std::string_view rest = document.substr(0, document.find("?>"));
    const std::size_t start = rest.find(keyword);
    if (start == std::string_view::npos) return {};
    rest = withoutSpace(rest.substr(start + keyword.size()));
    if (!rest.starts_with('=')) return {};
    rest = withoutSpace(rest.substr(1));
    if (rest.empty() || (rest.front() != '"' && rest.front() != '\'')) return {};
    const std::size_t end = rest.find(rest.front(), 1);
    return end == std::string_view::npos ? std::string_view{} : rest.substr(1, end - 1);
}

}  // namespace quill1xml
