// Which version of the library a program has.
#pragma once

#include <string_view>

namespace quill1xml {

/// Such as "1.0.0".
std::string_view version() noexcept;

}  // namespace quill1xml
