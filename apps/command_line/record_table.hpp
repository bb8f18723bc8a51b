// Downloaded records as a table: which of their properties it shows.
#pragma once

#include "automation/classes.hpp"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace quill1xml::cli {

enum class Show : std::uint8_t {
    value,
    count,  ///< of the objects in a collection
    total,  ///< of price times quantity, over the line items that have both; empty where none has
};

struct Column {
    std::string_view title;
    std::string_view property;
    Show show = Show::value;
};

struct RecordTable {
    std::string_view one;   ///< what a row is called in the count
    std::string_view many;  ///< the same for any number but 1
    std::span<const Column> columns;
    std::string_view rows{};  ///< the collection whose objects are the rows; empty: the records are
};

/// The table and, on its last line, the count; no more than that without rows. Values that are absent show as nothing,
/// control characters in texts as blanks, those that turn the direction of writing as "\u202e" and
/// the like. The width is that of layOut. Throws as forEachObject.
std::string recordTable(const automation::Collection& records, const RecordTable& declaration, std::size_t width);

}  // namespace quill1xml::cli
