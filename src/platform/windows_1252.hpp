// The Windows-1252 code page.
#pragma once

#include <cstdint>

namespace quill1xml::platform {

/// The character of a byte. The five bytes without one stand for the control characters of the same number.
constexpr char16_t windows1252(std::uint8_t byte) {
    constexpr char16_t upperControls[32] = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
    };
    return byte >= 0x80 && byte < 0xA0 ? upperControls[byte - 0x80] : byte;
}

}  // namespace quill1xml::platform
