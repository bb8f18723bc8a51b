#include "command_line/aligned_tables.hpp"

#include "command_line/display_width.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace quill1xml::cli {
namespace {

using Cells = std::vector<std::string>;

/// The cells of a row; a bar behind a backslash is text.
Cells cellsOf(std::string_view row) {
    Cells cells;
    for (std::size_t begin = 2; begin < row.size();) {
        std::size_t end = row.find('|', begin);
        while (end != std::string_view::npos && row[end - 1] == '\\') end = row.find('|', end + 1);
        if (end == std::string_view::npos) break;
        cells.emplace_back(row.substr(begin, end > begin ? end - begin - 1 : 0));
        begin = end + 2;
    }
    return cells;
}

bool isRule(const Cells& cells) { return !cells.empty() && cells.front().starts_with("--"); }

std::size_t widthOf(const std::string& cell) { return displayWidth(toUtf16(cell)); }

/// The last column needs no room behind it.
std::string aligned(const std::vector<Cells>& rows) {
    std::vector<std::size_t> widths;
    for (const Cells& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size() && !isRule(row); ++i) widths[i] = std::max(widths[i], widthOf(row[i]));
    }
    std::string text;
    for (const Cells& row : rows) {
        text += '|';
        for (std::size_t i = 0; i < row.size(); ++i) {
            const bool last = i + 1 == row.size();
            const std::string cell = isRule(row) ? std::string(last ? 3 : widths[i], '-') : row[i];
            const std::size_t room = last ? 0 : widths[i] - std::min(widths[i], widthOf(cell));
            text.append(" ").append(cell).append(room, ' ').append(" |");
        }
        text += '\n';
    }
    return text;
}

}  // namespace

std::string withAlignedTables(std::string_view markdown) {
    std::string text;
    std::vector<Cells> table;
    for (std::size_t begin = 0; begin < markdown.size();) {
        const std::size_t end = std::min(markdown.find('\n', begin), markdown.size() - 1) + 1;
        const std::string_view line = markdown.substr(begin, end - begin);
        begin = end;
        if (line.starts_with("|---")) {
            table.emplace_back(table.empty() ? 0 : table.back().size(), "---");
        } else if (line.starts_with("| ")) {
            table.push_back(cellsOf(line));
        } else {
            text.append(aligned(table)).append(line);
            table.clear();
        }
    }
    return text + aligned(table);
}

}  // namespace quill1xml::cli
