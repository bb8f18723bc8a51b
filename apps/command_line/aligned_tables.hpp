// Markdown for the eye.
#pragma once

#include <string>
#include <string_view>

namespace quill1xml::cli {

/// The text with the columns of its tables one below the other.
std::string withAlignedTables(std::string_view markdown);

}  // namespace quill1xml::cli
