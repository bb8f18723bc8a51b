#include "text/code_page.hpp"

namespace quill1xml {

std::optional<std::uint8_t> codePageByte(const platform::System& system, char16_t character) {
    if (character < 0x80) return static_cast<std::uint8_t>(character);
    for (int code = 128; code < 256; ++code) {
        const auto byte = static_cast<std::uint8_t>(code);
        if (system.codePageCharacter(byte) == character) return byte;
    }
    return std::nullopt;
}

}  // namespace quill1xml
