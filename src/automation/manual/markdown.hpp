// Pieces of Markdown.
#pragma once

#include <string>
#include <string_view>

namespace quill1xml::automation {

inline std::string code(std::string_view text) { return std::string("`").append(text).append("`"); }

/// Cells of a table must not hold a bar.
inline std::string cell(std::string text) {
    for (std::size_t i = 0; (i = text.find('|', i)) != std::string::npos; i += 2) text.insert(i, 1, '\\');
    return text;
}

inline std::string fenced(std::string_view language, std::string_view text) {
    std::string block("```");
    return block.append(language).append("\n").append(text).append(text.ends_with('\n') ? "```\n\n" : "\n```\n\n");
}

}  // namespace quill1xml::automation
