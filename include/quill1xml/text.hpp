// UTF-8 at the edges: the library itself speaks UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace quill1xml {

/// UTF-16 for UTF-8 text; each byte that is not part of valid UTF-8 becomes U+FFFD.
std::u16string toUtf16(std::string_view utf8);

/// UTF-8 for UTF-16 text; a lone surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view utf16);

}  // namespace quill1xml
