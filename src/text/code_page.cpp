#include "text/code_page.hpp"

#include <algorithm>

namespace quill1xml {

std::optional<std::uint8_t> codePageByte(const CodePage& codePage, char16_t character) {
    if (character < 0x80) return static_cast<std::uint8_t>(character);
    const auto found = std::find(codePage.begin() + 0x80, codePage.end(), character);
    if (found == codePage.end()) return std::nullopt;
    return static_cast<std::uint8_t>(found - codePage.begin());
}

}  // namespace quill1xml
