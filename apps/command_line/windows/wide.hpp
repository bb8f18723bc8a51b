// Between our UTF-8 and the wide texts of the system.
#pragma once

#include "quill1xml/text.hpp"

#include <string>
#include <string_view>

namespace quill1xml::cli {

inline std::wstring toWide(std::string_view utf8) {
    const std::u16string text = toUtf16(utf8);
    return {text.begin(), text.end()};
}

inline std::string fromWide(std::wstring_view text) { return toUtf8(std::u16string(text.begin(), text.end())); }

}  // namespace quill1xml::cli
