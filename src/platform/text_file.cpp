#include "platform/text_file.hpp"

#include "quill1xml/error.hpp"

#include <algorithm>
#include <bit>
#include <cstring>

namespace quill1xml::platform {

std::u16string textOf(const Bytes& content, Text fileName) {
    if (content.empty()) return {};
    const std::size_t markSize = byteOrderMark.size();
    const bool marked =
        content.size() >= markSize && std::equal(byteOrderMark.begin(), byteOrderMark.end(), content.begin());
    if (!marked || content.size() % sizeof(char16_t) != 0) {
        throw runtimeError(
            RuntimeError::typeMismatch,
            std::u16string(fileName) + u" is not UTF-16 text with a byte-order mark; restore the file or delete it");
    }
    std::u16string text((content.size() - markSize) / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), content.data() + markSize, text.size() * sizeof(char16_t));
    if constexpr (std::endian::native == std::endian::big) {
        for (char16_t& unit : text) unit = static_cast<char16_t>(unit << 8 | unit >> 8);
    }
    return text;
}

}  // namespace quill1xml::platform
