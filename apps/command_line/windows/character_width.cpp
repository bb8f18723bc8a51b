#include "command_line/character_width.hpp"

#include <windows.h>

namespace quill1xml::cli {

std::size_t characterWidth(char32_t character) {
    // A console gives each half of a pair a cell of its own.
    if (character > 0xFFFF) return 2;
    const auto unit = static_cast<wchar_t>(character);
    WORD kind = 0;
    if (GetStringTypeW(CT_CTYPE3, &unit, 1, &kind) == 0) return 1;
    if ((kind & C3_NONSPACING) != 0) return 0;
    constexpr WORD eastAsian = C3_FULLWIDTH | C3_IDEOGRAPH | C3_HIRAGANA | C3_KATAKANA;
    return (kind & eastAsian) != 0 && (kind & C3_HALFWIDTH) == 0 ? 2 : 1;
}

}  // namespace quill1xml::cli
