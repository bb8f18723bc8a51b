#include "manual_page/sections.hpp"

#include <algorithm>
#include <cctype>

namespace quill1xml::manual_page {
namespace {

/// "what-a-store-must-answer" of "What a store must answer".
std::string slugOf(std::string_view title) {
    std::string slug;
    for (const char c : title) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
            slug += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        } else if (!slug.empty() && slug.back() != '-') {
            slug += '-';
        }
    }
    while (slug.ends_with('-')) slug.pop_back();
    return slug;
}

/// The level of a heading; 0 of any other line.
int levelOf(std::string_view line) {
    const std::size_t level = line.find_first_not_of('#');
    return level == std::string_view::npos || level == 0 || line[level] != ' ' ? 0 : static_cast<int>(level);
}

}  // namespace

std::vector<Section> sectionsOf(std::string_view markdown, std::string_view id, int deepest) {
    std::vector<Section> sections;
    bool inCode = false;
    for (std::size_t begin = 0; begin < markdown.size();) {
        const std::size_t lineEnd = std::min(markdown.find('\n', begin), markdown.size() - 1) + 1;
        const std::string_view line = markdown.substr(begin, lineEnd - begin);
        if (line.starts_with("```")) inCode = !inCode;
        const int level = inCode ? 0 : levelOf(line);
        if (level > 0 && level <= deepest) {
            const auto skipped = static_cast<std::size_t>(level) + 1;
            std::string title(line.substr(skipped, line.find_last_not_of('\n') + 1 - skipped));
            std::string place = sections.empty() ? std::string(id) : std::string(id) + "-" + slugOf(title);
            sections.push_back({level, std::move(title), std::move(place), markdown.substr(lineEnd, 0)});
        } else if (!sections.empty()) {
            std::string_view& body = sections.back().body;
            body = std::string_view(body.data(), body.size() + line.size());
        }
        begin = lineEnd;
    }
    return sections;
}

}  // namespace quill1xml::manual_page
