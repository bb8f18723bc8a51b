#include "text/xml_text.hpp"

#include "text/numbers.hpp"

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

/// True for the ASCII characters that stay as they are.
constexpr bool isPlain(char16_t c) {
    return c < 0x80 && c != u'&' && c != u'"' && c != u'\'' && c != u'<' && c != u'>';
}

void appendReference(std::u16string& out, int number) {
    out.append(u"&#");
    appendInteger(out, number);
    out.push_back(u';');
}

/// A reference after its "&", and the character it stands for.
struct Reference {
    Text tail;
    char16_t character;
};

constexpr Reference references[] = {{u"quot;", u'"'}, {u"#39;", u'\''},   {u"#60;", u'<'},
                                    {u"#62;", u'>'},  {u"#233;", eAcute}, {u"apos;", u'\''}};

}  // namespace

XmlText::XmlText(const std::function<char16_t(std::uint8_t)>& character) {
    for (int code = firstExtended; code < 256; ++code) {
        const char16_t c = character(static_cast<std::uint8_t>(code));
        characters_[static_cast<std::size_t>(code - firstExtended)] = c;
        codes_.push_back({c, static_cast<std::uint8_t>(code)});
    }
    std::ranges::stable_sort(codes_, {}, &Extended::character);
}

std::uint8_t XmlText::extendedCode(char16_t character) const {
    const auto found = std::ranges::lower_bound(codes_, character, {}, &Extended::character);
    return found != codes_.end() && found->character == character ? found->code : std::uint8_t{0};
}

void XmlText::encodeSpecial(std::u16string& out, char16_t c, bool allExtended) const {
    switch (c) {
        case u'&': out.append(u"&amp;"); return;
        case u'"': out.append(u"&quot;"); return;
        case u'\'': out.append(u"&#39;"); return;
        case u'<': out.append(u"&#60;"); return;
        case u'>': out.append(u"&#62;"); return;
        case eAcute: out.append(u"&#233;"); return;
        case enDash: out.push_back(u'-'); return;
        default: break;
    }
    if (allExtended) {
        if (const int code = extendedCode(c); code != 0) {
            appendReference(out, code);
        } else {
            out.push_back(c);
        }
    } else if (c == characters_[leftDouble - firstExtended] || c == characters_[rightDouble - firstExtended]) {
        out.append(u"&quot;");
    } else if (c == characters_[leftSingle - firstExtended] || c == characters_[rightSingle - firstExtended]) {
        out.append(u"&#39;");
    } else {
        out.push_back(c);
    }
}

void XmlText::encode(std::u16string& out, Text text, bool allExtended) const {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isPlain(text[i])) continue;
        out.append(text, begin, i - begin);
        encodeSpecial(out, text[i], allExtended);
        begin = i + 1;
    }
    out.append(text, begin);
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
                    appendReference(out, c);
                } else {
                    out.push_back(c);
                }
        }
    }
}

}  // namespace quill1xml
