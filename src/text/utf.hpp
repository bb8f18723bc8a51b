// UTF-8 looked at and put together.
#pragma once

#include <string>
#include <string_view>

namespace quill1xml {

bool isUtf8(std::string_view bytes);

/// Appends UTF-16 text in UTF-8; a lone surrogate becomes U+FFFD, and then it returns false.
bool appendUtf8(std::string& out, std::u16string_view utf16);

}  // namespace quill1xml
