// Blanks around texts.
#pragma once

#include "quill1xml/types.hpp"

namespace quill1xml {

/// The text without the given characters at both ends; without blanks by default, as automation hosts trim.
constexpr Text trimBlanks(Text text, Text blanks = u" ") {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == Text::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace quill1xml
