// GUIDs from the text of their identities.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string_view>

namespace quill1xml::automation {

/// Requires the text form without braces, in lower case.
constexpr GUID guidOf(std::string_view text) {
    const auto hex = [text](std::size_t start, std::size_t digits) {
        std::uint32_t value = 0;
        for (const char c : text.substr(start, digits)) {
            value = value * 16 + static_cast<std::uint32_t>(c <= '9' ? c - '0' : c - 'a' + 10);
        }
        return value;
    };
    GUID guid{hex(0, 8), static_cast<unsigned short>(hex(9, 4)), static_cast<unsigned short>(hex(14, 4)), {}};
    for (std::size_t i = 0; i < 8; ++i) {
        guid.Data4[i] = static_cast<unsigned char>(hex(i < 2 ? 19 + 2 * i : 20 + 2 * i, 2));
    }
    return guid;
}

}  // namespace quill1xml::automation
