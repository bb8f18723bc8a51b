#include "command_line/display_width.hpp"

#include <algorithm>
#include <span>

namespace quill1xml::cli {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

/// Combining marks, joiners and variation selectors.
constexpr Range unseen[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x064B, 0x065F}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF},
    {0x200B, 0x200F}, {0x20D0, 0x20FF}, {0x3099, 0x309A}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xE0100, 0xE01EF},
};

constexpr Range wide[] = {
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x23E9, 0x23EC},   {0x2614, 0x2615},   {0x2648, 0x2653},
    {0x26BD, 0x26BE},   {0x2705, 0x2705},   {0x2728, 0x2728},   {0x274C, 0x274C},   {0x2753, 0x2755},
    {0x2B50, 0x2B50},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xA960, 0xA97F},   {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F},
    {0x1F680, 0x1F6FF}, {0x1F7E0, 0x1F7EB}, {0x1F900, 0x1F9FF}, {0x1FA70, 0x1FAFF}, {0x20000, 0x3FFFD},
};

bool isIn(std::span<const Range> ranges, char32_t character) {
    const auto after = std::ranges::upper_bound(ranges, character, {}, &Range::first);
    return after != ranges.begin() && character <= std::prev(after)->last;
}

std::size_t widthOf(char32_t character) {
    if (isIn(unseen, character)) return 0;
    return isIn(wide, character) ? 2 : 1;
}

/// Takes the first character off a text that is not empty.
char32_t takeCharacter(Text& text) {
    const char16_t first = text.front();
    const bool pair = text.size() > 1 && (first & 0xFC00) == 0xD800 && (text[1] & 0xFC00) == 0xDC00;
    const char32_t character =
        pair ? 0x10000U + ((static_cast<char32_t>(first) - 0xD800U) << 10U) + (text[1] - 0xDC00U) : first;
    text.remove_prefix(pair ? 2 : 1);
    return character;
}

}  // namespace

std::size_t displayWidth(Text text) {
    std::size_t columns = 0;
    while (!text.empty()) columns += widthOf(takeCharacter(text));
    return columns;
}

std::u16string fitted(Text text, std::size_t columns) {
    if (displayWidth(text) <= columns) return std::u16string(text);
    std::size_t left = columns - 1;
    Text rest = text;
    std::size_t kept = 0;
    for (std::size_t width = 0; (width = widthOf(takeCharacter(rest))) <= left; left -= width) {
        kept = text.size() - rest.size();
    }
    return std::u16string(text.substr(0, kept)) + u'\u2026';
}

}  // namespace quill1xml::cli
