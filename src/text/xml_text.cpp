#include "text/xml_text.hpp"

#include <algorithm>

namespace quill1xml {
namespace {

constexpr char16_t enDash = u'\u2013';
constexpr char16_t eAcute = u'\u00E9';
constexpr int firstExtended = 128;

// Codes of the code page whose characters are folded to straight quotes.
constexpr std::uint8_t leftSingle = 145;
constexpr std::uint8_t rightSingle = 146;
constexpr std::uint8_t leftDouble = 147;
constexpr std::uint8_t rightDouble = 148;

/// What a character becomes: as many units of the text as the size says, "&quot;" and "&#128;" being the longest.
/// Copied whole, it costs one instruction each way.
struct Replacement {
    std::array<char16_t, 7> text{};
    char16_t size = 0;

    constexpr Replacement() = default;
    constexpr explicit Replacement(char16_t character) : text{character}, size(1) {}
    constexpr explicit Replacement(Text given) : size(static_cast<char16_t>(given.size())) {
        std::ranges::copy(given, text.begin());
    }
};
static_assert(std::tuple_size_v<decltype(Replacement::text)> == XmlText::longestReplacement);

constexpr auto asciiReplacements = [] {
    std::array<Replacement, 0x80> all{};
    for (char16_t c = 0; c < 0x80; ++c) all[c] = Replacement(c);
    all[u'&'] = Replacement(Text(u"&amp;"));
    all[u'"'] = Replacement(Text(u"&quot;"));
    all[u'\''] = Replacement(Text(u"&#39;"));
    all[u'<'] = Replacement(Text(u"&#60;"));
    all[u'>'] = Replacement(Text(u"&#62;"));
    return all;
}();

/// Whether an ASCII character stays as it is.
bool isPlain(char16_t c) {
    static constexpr auto plain = [] {
        std::array<bool, 0x80> all{};
        std::ranges::transform(asciiReplacements, all.begin(), [](const Replacement& each) { return each.size == 1; });
        return all;
    }();
    return c < 0x80 && plain[c];
}

/// The reference to a code from 128 to 255.
constexpr Replacement referenceTo(int code) {
    const auto digit = [](int value) { return static_cast<char16_t>(u'0' + value % 10); };
    const char16_t text[] = {u'&', u'#', digit(code / 100), digit(code / 10), digit(code), u';'};
    return Replacement(Text(text, std::size(text)));
}

/// A reference after its "&", and the character it stands for.
struct Reference {
    Text tail;
    char16_t character;
};

constexpr Reference references[] = {{u"quot;", u'"'}, {u"#39;", u'\''},   {u"#60;", u'<'},
                                    {u"#62;", u'>'},  {u"#233;", eAcute}, {u"apos;", u'\''}};

}  // namespace

XmlText::XmlText(const CodePage& codePage) {
    std::copy(codePage.begin() + firstExtended, codePage.end(), characters_.begin());
    for (int code = firstExtended; code < 256; ++code) {
        codes_.push_back({codePage[static_cast<std::size_t>(code)], static_cast<std::uint8_t>(code)});
    }
    std::ranges::stable_sort(codes_, {}, &Extended::character);
}

std::uint8_t XmlText::extendedCode(char16_t character) const {
    const auto found = std::ranges::lower_bound(codes_, character, {}, &Extended::character);
    return found != codes_.end() && found->character == character ? found->code : std::uint8_t{0};
}

char16_t* XmlText::write(char16_t* to, Text text, bool allExtended) const {
    const auto extendedReplacement = [&](char16_t c) {
        const auto is = [&](std::uint8_t code) { return c == characters_[code - firstExtended]; };
        if (c == eAcute) return referenceTo(c);
        if (c == enDash) return Replacement(u'-');
        if (allExtended) {
            const std::uint8_t code = extendedCode(c);
            return code == 0 ? Replacement(c) : referenceTo(code);
        }
        if (is(leftDouble) || is(rightDouble)) return asciiReplacements[u'"'];
        if (is(leftSingle) || is(rightSingle)) return asciiReplacements[u'\''];
        return Replacement(c);
    };
    const char16_t* from = text.data();
    const char16_t* const end = from + text.size();
    while (from != end) {
        // Most characters stay.
        for (; end - from >= 4 && isPlain(from[0]) && isPlain(from[1]) && isPlain(from[2]) && isPlain(from[3]);
             from += 4) {
            to = std::copy_n(from, 4, to);
        }
        while (from != end && isPlain(*from)) *to++ = *from++;
        if (from == end) break;
        const char16_t c = *from++;
        const Replacement& replacement = c < 0x80 ? asciiReplacements[c] : extendedReplacement(c);
        std::ranges::copy(replacement.text, to);
        to += replacement.size;
    }
    return to;
}

void XmlText::encode(std::u16string& out, Text text, bool allExtended) const {
    // In pieces, which grow in a buffer that stays small whatever the text.
    constexpr std::size_t pieceSize = 64;
    std::array<char16_t, (pieceSize + 1) * longestReplacement> buffer;
    for (; !text.empty(); text.remove_prefix(std::min(pieceSize, text.size()))) {
        out.append(buffer.data(), write(buffer.data(), text.substr(0, pieceSize), allExtended));
    }
}

namespace {

/// Decodes references; what no fixed reference matches after an "&" is left to `extended`, which appends a character
/// and returns how much it took, or 0.
template <class Extended>
void decodeReferences(std::u16string& out, Text text, const Extended& extended) {
    while (!text.empty()) {
        const std::size_t ampersand = text.find(u'&');
        out.append(text.substr(0, ampersand));
        if (ampersand == Text::npos) return;
        text.remove_prefix(ampersand + 1);
        if (text.starts_with(u"amp;")) text.remove_prefix(4);

        const auto known = std::ranges::find_if(references, [&](const auto& r) { return text.starts_with(r.tail); });
        if (known != std::end(references)) {
            out.push_back(known->character);
            text.remove_prefix(known->tail.size());
        } else if (const std::size_t taken = extended(text); taken > 0) {
            text.remove_prefix(taken);
        } else {
            out.push_back(u'&');
        }
    }
}

/// The number of "#128;" to "#255;" at the start of a text; 0 when there is none.
int extendedReference(Text text) {
    if (text.size() < 5 || text[0] != u'#' || text[4] != u';') return 0;
    int code = 0;
    for (const char16_t c : text.substr(1, 3)) {
        if (c < u'0' || c > u'9') return 0;
        code = code * 10 + (c - u'0');
    }
    return code >= firstExtended && code < 256 ? code : 0;
}

}  // namespace

void XmlText::decode(std::u16string& out, Text text, bool allExtended) const {
    if (!allExtended) {
        decodeXmlText(out, text);
        return;
    }
    decodeReferences(out, text, [&](Text rest) -> std::size_t {
        const int code = extendedReference(rest);
        if (code == 0) return 0;
        out.push_back(characters_[static_cast<std::size_t>(code - firstExtended)]);
        return 5;
    });
}

void decodeXmlText(std::u16string& out, Text text) {
    decodeReferences(out, text, [](Text) { return std::size_t{0}; });
}

void encodeLatin(std::u16string& out, Text text) {
    for (const char16_t c : text) {
        switch (c) {
            case u'&': out.append(u"&amp;"); break;
            case u'"': out.append(u"&quot;"); break;
            case u'\'': out.append(u"&apos;"); break;
            case u'<': out.append(u"&lt;"); break;
            case u'>': out.append(u"&gt;"); break;
            case u'\u00D7':
            case u'\u00F7': out.push_back(c); break;
            default:
                if (c >= 0xC0 && c <= 0xFF) {
                    const Replacement reference = referenceTo(c);
                    out.append(reference.text.data(), reference.size);
                } else {
                    out.push_back(c);
                }
        }
    }
}

}  // namespace quill1xml
