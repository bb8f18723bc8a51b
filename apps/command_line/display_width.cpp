#include "command_line/display_width.hpp"

#include "command_line/character_width.hpp"

namespace quill1xml::cli {
namespace {

/// Takes the first character off a text that is not empty; a lone surrogate shows as the replacement character.
char32_t takeCharacter(Text& text) {
    const char16_t first = text.front();
    const bool pair = text.size() > 1 && (first & 0xFC00) == 0xD800 && (text[1] & 0xFC00) == 0xDC00;
    const char32_t character =
        pair ? 0x10000U + ((static_cast<char32_t>(first) - 0xD800U) << 10U) + (text[1] - 0xDC00U) : first;
    text.remove_prefix(pair ? 2 : 1);
    return (character & 0xFFFFF800U) == 0xD800U ? U'\uFFFD' : character;
}

}  // namespace

std::size_t displayWidth(Text text) {
    std::size_t columns = 0;
    while (!text.empty()) columns += characterWidth(takeCharacter(text));
    return columns;
}

std::u16string fitted(Text text, std::size_t columns) {
    if (displayWidth(text) <= columns) return std::u16string(text);
    std::size_t left = columns - 1;
    Text rest = text;
    std::size_t kept = 0;
    for (std::size_t width = 0; (width = characterWidth(takeCharacter(rest))) <= left; left -= width) {
        kept = text.size() - rest.size();
    }
    return std::u16string(text.substr(0, kept)) + u'\u2026';
}

}  // namespace quill1xml::cli
