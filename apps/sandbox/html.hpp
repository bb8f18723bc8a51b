// Small parts of pages. What comes in is text and may hold anything; what goes out is HTML.
#pragma once

#include "document.hpp"
#include "escape.hpp"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quill1xml::sandbox {

/// Names and values; an empty value leaves the parameter out.
using Parameters = std::vector<std::pair<std::string_view, std::string>>;

/// The text in an address: all but plain letters and digits become %XX.
std::string inAddress(std::string_view text);

std::string address(std::string_view path, const Parameters& parameters);
std::string recordAddress(std::int64_t id);
std::string imageAddress(std::string_view folder, std::string_view name);

std::string link(std::string_view address, std::string_view text);

/// An attribute as it came; empty when there is none of that name.
std::string attributeOf(const Json& attributes, const char* name);

/// A date and time of the format for people: a blank for the "T", nothing for midnight or for the zero date.
std::string shownTime(std::string_view time);

/// An amount with at least two decimals; any other text as it is.
std::string shownAmount(std::string_view number);

/// A number without the blank and the missing zero of the format.
std::string shownNumber(std::string_view number);

/// Those of the texts that are not empty, with the separator between them.
std::string joined(const std::vector<std::string>& texts, std::string_view separator);

/// A table for rows of finished cells.
class Table {
public:
    struct Column {
        std::string_view heading;
        bool isNumber = false;
    };

    /// The caption is for those who do not see the heading above.
    Table(std::string_view caption, std::vector<Column> columns);

    void row(const std::vector<std::string>& cells);
    bool empty() const { return rows_.empty(); }
    std::string html() const;

private:
    std::string caption_;
    std::vector<Column> columns_;
    std::string rows_;
};

}  // namespace quill1xml::sandbox
