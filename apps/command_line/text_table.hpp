// Tables for people.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quill1xml::cli {

enum class Cells : std::uint8_t {
    text,    ///< to the left, cut off where room is short
    date,    ///< to the left
    number,  ///< to the right
};

struct TableColumn {
    std::u16string title;
    Cells cells;
};

using TableRow = std::vector<std::u16string>;  ///< a cell for each column, without control characters

/// The table in UTF-8, with its titles. Texts are cut off, though not below the width of their title, to keep the lines
/// within that many columns of the terminal; 0 for lines of any length.
std::string layOut(const std::vector<TableColumn>& columns, const std::vector<TableRow>& rows, std::size_t width);

}  // namespace quill1xml::cli
