#include "platform/windows/source_text.hpp"

#include <algorithm>

namespace quill1xml::platform {
namespace {

/// What opens the attribute's value at the end of a text that ends inside one: its name, "=" and the quote.
Text openAttribute(Text text) {
    const std::size_t tag = text.rfind(u'<');
    if (tag == Text::npos) return {};
    std::size_t open = Text::npos;
    for (std::size_t i = tag; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (open != Text::npos) {
            if (c == text[open]) open = Text::npos;
        } else if (c == u'>') {
            return {};
        } else if (c == u'"' || c == u'\'') {
            open = i;
        }
    }
    if (open == Text::npos) return {};
    const std::size_t nameEnd = text.find_last_not_of(u"= \t\r\n", open - 1);
    const std::size_t nameStart = text.find_last_of(u" \t\r\n", nameEnd) + 1;
    return text.substr(nameStart, open + 1 - nameStart);
}

bool isSecondHalf(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

}  // namespace

std::u16string excerpt(Text line, std::size_t offset) {
    constexpr std::size_t length = 200;
    if (line.size() <= length) return std::u16string(line);
    std::size_t start = std::min(offset - std::min(offset, length / 2), line.size() - length);
    std::size_t end = start + length;
    if (isSecondHalf(line[start])) ++start;
    if (end < line.size() && isSecondHalf(line[end])) --end;
    return std::u16string(openAttribute(line.substr(0, start))).append(line.substr(start, end - start));
}

}  // namespace quill1xml::platform
