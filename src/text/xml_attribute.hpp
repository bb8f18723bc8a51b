// Attributes of XML: those that this library writes for itself or for a request, and those that a report quotes.
#pragma once

#include "quill1xml/types.hpp"

#include <string>
#include <string_view>

namespace quill1xml {

/// Appends a blank, the name, and the value in quotes, so that any XML parser reads the value back unchanged.
void appendXmlAttribute(std::u16string& out, Text name, Text value);

/// What a text that ends inside an attribute has of it without its value: the name, as far as it goes, and the quote
/// where the value has begun. Empty for any other text.
template <class Character>
constexpr std::basic_string_view<Character> openAttribute(std::basic_string_view<Character> text) {
    using View = std::basic_string_view<Character>;
    std::size_t i = text.rfind(Character('<'));
    std::size_t start = View::npos;
    std::size_t quote = View::npos;
    for (; i < text.size(); ++i) {
        const Character c = text[i];
        const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
        if (quote != View::npos) {
            if (c != text[quote]) continue;
            quote = View::npos;
            start = i + 1;
        } else if (c == '>') {
            return {};
        } else if (c == '"' || c == '\'') {
            quote = i;
        } else if (blank && (start == View::npos || start == i)) {
            start = i + 1;
        }
    }
    if (start == View::npos) return {};
    return text.substr(start, quote == View::npos ? View::npos : quote + 1 - start);
}

/// The text with *** for the value of each attribute Password, or for what the text has of it.
std::u16string withoutPasswords(Text text);

}  // namespace quill1xml
