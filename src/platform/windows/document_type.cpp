#include "platform/windows/document_type.hpp"

namespace quill1xml::platform {
namespace {

constexpr Text blanks = u" \t\r\n\uFEFF";

/// What follows the end mark; empty when there is none.
Text after(Text document, Text endMark) {
    const std::size_t end = document.find(endMark);
    return end == Text::npos ? Text() : document.substr(end + endMark.size());
}

/// UTF-16 for UTF-16 of either byte order; a character for each byte otherwise, which does for the ASCII of markup.
std::u16string unitsOf(std::span<const std::uint8_t> bytes) {
    const auto startsWith = [bytes](std::uint8_t first, std::uint8_t second) {
        return bytes.size() >= 2 && bytes[0] == first && bytes[1] == second;
    };
    const bool lowFirst = startsWith(0xFF, 0xFE) || startsWith('<', 0);
    const bool highFirst = startsWith(0xFE, 0xFF) || startsWith(0, '<');
    if (!lowFirst && !highFirst) return {bytes.begin(), bytes.end()};
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const unsigned low = bytes[lowFirst ? i : i + 1];
        const unsigned high = bytes[lowFirst ? i + 1 : i];
        units.push_back(static_cast<char16_t>(high << 8 | low));
    }
    return units;
}

}  // namespace

bool hasDeclarations(Text document) {
    // The document type can only stand before the root, among comments and processing instructions.
    while (true) {
        const std::size_t start = document.find_first_not_of(blanks);
        if (start == Text::npos) return false;
        document.remove_prefix(start);
        if (document.starts_with(u"<?")) {
            document = after(document, u"?>");
        } else if (document.starts_with(u"<!--")) {
            document = after(document, u"-->");
        } else {
            return document.starts_with(u"<!DOCTYPE") &&
                   (document.find(u"<!ENTITY") != Text::npos || document.find(u"<!ATTLIST") != Text::npos);
        }
    }
}

bool hasDeclarations(std::span<const std::uint8_t> document) {
    // A byte-order mark in UTF-8 is the one sign of another encoding that stands before the markup.
    if (document.size() >= 3 && document[0] == 0xEF && document[1] == 0xBB && document[2] == 0xBF) {
        document = document.subspan(3);
    }
    return hasDeclarations(unitsOf(document));
}

}  // namespace quill1xml::platform
