// The files that are built into the page.
#pragma once

#include <span>
#include <string_view>

namespace quill1xml::manual_page {

struct Part {
    std::string_view name;  ///< of the file, without its folder
    std::string_view text;
};

/// The style and the script, then the chapters in their order.
std::span<const Part> parts();

}  // namespace quill1xml::manual_page
