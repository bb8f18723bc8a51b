#include "command_line/harmless_text.hpp"

#include "quill1xml/text.hpp"

namespace quill1xml::cli {
namespace {

constexpr std::size_t longestExcerpt = 200;

bool isControl(char16_t c) { return c < u' ' || (c >= u'\u007F' && c < u'\u00A0'); }

/// Line and paragraph separators, direction marks, embeddings, overrides and isolates.
bool movesText(char16_t c) {
    return c == u'\u061C' || c == u'\u200E' || c == u'\u200F' || (c >= u'\u2028' && c <= u'\u202E') ||
           (c >= u'\u2066' && c <= u'\u2069');
}

bool isHighSurrogate(char16_t c) { return (c & 0xFC00U) == 0xD800U; }

}  // namespace

std::u16string harmless(Text text) {
    std::u16string shown;
    for (const char16_t c : text) {
        if (!isControl(c) && !movesText(c)) {
            shown += c;
            continue;
        }
        shown += u"\\u";
        for (int shift = 12; shift >= 0; shift -= 4) shown += u"0123456789abcdef"[(c >> shift) & 0xF];
    }
    return shown;
}

std::string harmless(Text text, std::size_t characters) {
    if (text.size() <= characters) return toUtf8(harmless(text));
    if (isHighSurrogate(text[characters - 1])) --characters;
    return toUtf8(harmless(text.substr(0, characters))) + "\u2026";
}

std::string excerpt(Text text) { return harmless(text, longestExcerpt); }
std::string excerpt(std::string_view utf8) { return excerpt(toUtf16(utf8)); }

}  // namespace quill1xml::cli
