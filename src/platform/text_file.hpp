// Text files: UTF-16 little-endian behind a byte-order mark, on every platform.
#pragma once

#include "quill1xml/types.hpp"

#include <array>
#include <string>

namespace quill1xml::platform {

inline constexpr std::array<std::uint8_t, 2> byteOrderMark{0xFF, 0xFE};

/// The text of a file's content without the mark; an empty file has none. Error 13 for anything else.
std::u16string textOf(const Bytes& content, Text fileName);

}  // namespace quill1xml::platform
