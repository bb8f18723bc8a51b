#include "command_line/text_table.hpp"

#include "command_line/display_width.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <numeric>

namespace quill1xml::cli {
namespace {

constexpr std::size_t gap = 2;

std::vector<std::size_t> widestCells(const std::vector<TableColumn>& columns, const std::vector<TableRow>& rows) {
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::size_t widest = displayWidth(columns[i].title);
        for (const TableRow& row : rows) widest = std::max(widest, displayWidth(row[i]));
        widths.push_back(widest);
    }
    return widths;
}

/// Takes from the widest text, column by column, until the line fits or nothing is left to take.
void shrink(std::vector<std::size_t>& widths, const std::vector<TableColumn>& columns, std::size_t limit) {
    std::size_t line = std::accumulate(widths.begin(), widths.end(), gap * (widths.size() - 1));
    for (; line > limit; --line) {
        std::size_t* widest = nullptr;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const bool shrinks = columns[i].cells == Cells::text && widths[i] > displayWidth(columns[i].title);
            if (shrinks && (widest == nullptr || widths[i] > *widest)) widest = &widths[i];
        }
        if (widest == nullptr) return;
        --*widest;
    }
}

}  // namespace

std::string layOut(const std::vector<TableColumn>& columns, const std::vector<TableRow>& rows, std::size_t width) {
    std::vector<std::size_t> widths = widestCells(columns, rows);
    if (width != 0) shrink(widths, columns, width);

    std::string table;
    const auto addLine = [&](const auto& cellOf) {
        std::u16string line;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const std::u16string cell = fitted(cellOf(i), widths[i]);
            const std::u16string blanks(widths[i] - displayWidth(cell), u' ');
            if (i > 0) line.append(gap, u' ');
            line += columns[i].cells == Cells::number ? blanks + cell : cell + blanks;
        }
        line.erase(line.find_last_not_of(u' ') + 1);
        table += toUtf8(line) + '\n';
    };
    addLine([&](std::size_t i) -> const std::u16string& { return columns[i].title; });
    for (const TableRow& row : rows) addLine([&](std::size_t i) -> const std::u16string& { return row[i]; });
    return table;
}

}  // namespace quill1xml::cli
