#include "text/utf.hpp"

#include "quill1xml/text.hpp"

#include <algorithm>
#include <array>
#include <cstdint>

namespace quill1xml {
namespace {

constexpr char32_t replacement = 0xFFFD;

char* writeUtf8(char* to, char32_t c) {
    const auto put = [&to](char32_t byte) { *to++ = static_cast<char>(byte); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | (c >> 18));
        put(0x80 | ((c >> 12) & 0x3F));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    }
    return to;
}

/// Copies ASCII at the start of a text, in whole blocks that take the compiler a few instructions each. Returns its
/// length; what is left may be ASCII too.
std::size_t copyAscii(std::u16string_view text, char* to) {
    constexpr std::size_t block = 16;
    std::size_t copied = 0;
    for (; copied + block <= text.size(); copied += block) {
        const char16_t* const units = text.data() + copied;
        unsigned all = 0;
        for (std::size_t i = 0; i < block; ++i) all |= units[i];
        if (all >= 0x80) break;
        for (std::size_t i = 0; i < block; ++i) to[copied + i] = static_cast<char>(units[i]);
    }
    return copied;
}

void appendUtf16(std::u16string& out, char32_t c) {
    if (c < 0x10000) {
        out.push_back(static_cast<char16_t>(c));
    } else {
        out.push_back(static_cast<char16_t>(0xD7C0 + (c >> 10)));
        out.push_back(static_cast<char16_t>(0xDC00 | (c & 0x3FF)));
    }
}

/// The length of the sequence that a lead byte starts; 0 when it starts none.
std::size_t sequenceLength(std::uint8_t lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    if (lead >= 0xF0 && lead < 0xF5) return 4;
    return 0;
}

/// Decodes the sequence at the start of the text; length 0 when it is not valid UTF-8.
struct Decoded {
    char32_t character;
    std::size_t length;
};

Decoded decodeUtf8(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::size_t length = sequenceLength(byte(0));
    if (length == 1) return {byte(0), 1};
    if (length == 0 || length > text.size()) return {replacement, 0};
    char32_t c = byte(0) & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return {replacement, 0};
        c = (c << 6) | (byte(i) & 0x3F);
    }
    const bool overlong = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
    const bool outside = c > 0x10FFFF || (c >= 0xD800 && c < 0xE000);
    return overlong || outside ? Decoded{replacement, 0} : Decoded{c, length};
}

}  // namespace

bool isUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto ascii = std::find_if(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) != 0; });
        bytes.remove_prefix(static_cast<std::size_t>(ascii - bytes.begin()));
        if (bytes.empty()) break;
        const std::size_t length = decodeUtf8(bytes).length;
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::u16string toUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto ascii = std::find_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0x80) != 0; });
        out.insert(out.end(), utf8.begin(), ascii);
        utf8.remove_prefix(static_cast<std::size_t>(ascii - utf8.begin()));
        if (utf8.empty()) break;
        const Decoded decoded = decodeUtf8(utf8);
        appendUtf16(out, decoded.character);
        utf8.remove_prefix(decoded.length == 0 ? 1 : decoded.length);
    }
    return out;
}

bool appendUtf8(std::string& out, std::u16string_view utf16) {
    bool wellFormed = true;
    // In pieces, so that a large text needs no larger buffer beside it.
    constexpr std::size_t longestUnit = 3;
    std::array<char, 1024 * longestUnit> buffer;
    std::size_t i = 0;
    while (i < utf16.size()) {
        char* to = buffer.data();
        bool afterAscii = true;
        // A pair takes two units and four bytes.
        for (const std::size_t end = std::min(i + 1023, utf16.size()); i < end; ++i) {
            if (afterAscii) {
                const std::size_t copied = copyAscii(utf16.substr(i, end - i), to);
                to += copied;
                i += copied;
                if (i == end) break;
            }
            const char16_t unit = utf16[i];
            afterAscii = unit < 0x80;
            if (afterAscii) {
                *to++ = static_cast<char>(unit);
                continue;
            }
            const bool high = unit >= 0xD800 && unit < 0xDC00;
            const bool low = unit >= 0xDC00 && unit < 0xE000;
            if (high && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 && utf16[i + 1] < 0xE000) {
                const char32_t lead = static_cast<char32_t>(unit) - 0xD800u;
                to = writeUtf8(to, 0x10000u + (lead << 10) + (utf16[++i] - 0xDC00u));
            } else {
                wellFormed = wellFormed && !high && !low;
                to = writeUtf8(to, high || low ? replacement : static_cast<char32_t>(unit));
            }
        }
        out.append(buffer.data(), to);
    }
    return wellFormed;
}

std::string toUtf8(std::u16string_view utf16) {
    std::string out;
    out.reserve(utf16.size());
    appendUtf8(out, utf16);
    return out;
}

}  // namespace quill1xml
