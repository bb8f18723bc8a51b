// Text as it stands in an XML attribute value, and back.
//
// Each of the three is defined as an ordered chain of whole-text replacements; here each is one pass with the same
// result. That works because no replacement creates text that a later step of the chain would replace, but for one
// case: decoding "&amp;" yields an "&" that may start a further reference, and that reference is decoded too.
#pragma once

#include "quill1xml/types.hpp"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quill1xml {

/// Encodes and decodes with the characters of one single-byte code page.
class XmlText {
public:
    explicit XmlText(const CodePage& codePage);

    /// Appends the text with &, quotes, <, > and é as references, and the en dash flattened to a hyphen. With
    /// `allExtended` every character of codes 128 to 255 becomes a reference to its code-page number (not its Unicode
    /// number: the server reads it so); without it the curly quotes become straight ones.
    void encode(std::u16string& out, Text text, bool allExtended) const;

    /// The most characters that one character becomes, with room to copy in whole blocks.
    static constexpr std::size_t longestReplacement = 7;

    /// Writes the text as encode appends it and returns the end. Requires room for longestReplacement characters per
    /// character of the text and one more block.
    char16_t* write(char16_t* to, Text text, bool allExtended) const;

    /// Appends the decoded text. "&lt;" and "&gt;" are left alone.
    void decode(std::u16string& out, Text text, bool allExtended) const;

    /// The code-page byte of a character of codes 128 to 255; 0 when it has none.
    std::uint8_t extendedCode(char16_t character) const;

private:
    struct Extended {
        char16_t character;
        std::uint8_t code;
    };

    std::array<char16_t, 128> characters_;  // of codes 128 to 255
    std::vector<Extended> codes_;           // sorted by character
};

/// Appends the decoded text as XmlText::decode does without extended characters, for which no code page is needed.
void decodeXmlText(std::u16string& out, Text text);

/// Appends the older encoding: named references for the five XML characters, numeric ones for the Latin-1 letters.
void encodeLatin(std::u16string& out, Text text);

}  // namespace quill1xml
