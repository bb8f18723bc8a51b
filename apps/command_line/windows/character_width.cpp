#include "command_line/character_width.hpp"

#include <windows.h>

namespace quill1xml::cli {
namespace {

/// What the system does not tell: leading consonants and syllables are as wide as ideographs.
bool isHangul(char32_t character) {
    return (character >= 0x1100 && character <= 0x115F) || (character >= 0xAC00 && character <= 0xD7A3);
}

WORD typeOf(wchar_t unit, DWORD kind) {
    WORD type = 0;
    return GetStringTypeW(kind, &unit, 1, &type) == 0 ? WORD{} : type;
}

}  // namespace

std::size_t characterWidth(char32_t character) {
    // A console gives each half of a pair a cell of its own.
    if (character > 0xFFFF || isHangul(character)) return 2;
    const auto unit = static_cast<wchar_t>(character);
    const WORD type = typeOf(unit, CT_CTYPE3);
    // A letter with an accent counts as one that does not space, too.
    if ((type & C3_NONSPACING) != 0 && (type & C3_ALPHA) == 0) return 0;
    const bool joins = type == 0 && (typeOf(unit, CT_CTYPE1) & C1_CNTRL) != 0;
    if (joins) return 0;
    constexpr WORD eastAsian = C3_FULLWIDTH | C3_IDEOGRAPH | C3_HIRAGANA | C3_KATAKANA;
    return (type & eastAsian) != 0 && (type & C3_HALFWIDTH) == 0 ? 2 : 1;
}

}  // namespace quill1xml::cli
