// How pages look.
#pragma once

#include <string_view>

namespace quill1xml::sandbox {

/// A style sheet for light and dark screens, wide and narrow ones; it names no other resource.
std::string_view styleSheet();

}  // namespace quill1xml::sandbox
