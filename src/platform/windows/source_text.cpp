#include "platform/windows/source_text.hpp"

#include "text/xml_attribute.hpp"

#include <algorithm>

namespace quill1xml::platform {
namespace {

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
