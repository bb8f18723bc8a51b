// The Windows-1252 code page.
#pragma once

#include "quill1xml/types.hpp"

#include <algorithm>

namespace quill1xml {

/// The five bytes without a character stand for the control characters of the same number.
inline constexpr CodePage windows1252 = [] {
    constexpr char16_t from80[32] = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
    };
    CodePage characters{};
    for (std::size_t byte = 0; byte < characters.size(); ++byte) characters[byte] = static_cast<char16_t>(byte);
    std::ranges::copy(from80, characters.begin() + 0x80);
    return characters;
}();

}  // namespace quill1xml
