// A single-byte code page in the direction from characters to bytes.
#pragma once

#include "quill1xml/types.hpp"

#include <optional>

namespace quill1xml {

/// The byte of a character; nothing when the code page does not have it.
std::optional<std::uint8_t> codePageByte(const CodePage& codePage, char16_t character);

}  // namespace quill1xml
