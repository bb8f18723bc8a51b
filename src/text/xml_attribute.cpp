#include "text/xml_attribute.hpp"

#include "text/letter_case.hpp"
#include "text/numbers.hpp"

#include <algorithm>

namespace quill1xml {
namespace {

constexpr Text blanks = u" \t\r\n";

bool isLetter(char16_t c) { return asciiLower(c) >= u'a' && asciiLower(c) <= u'z'; }

}  // namespace

void appendXmlAttribute(std::u16string& out, Text name, Text value) {
    out.append(u" ").append(name).append(u"=\"");
    for (const char16_t c : value) {
        const bool reserved = c == u'&' || c == u'"' || c == u'<' || c == u'>';
        if (reserved || c == u'\t' || c == u'\r' || c == u'\n') {
            out.append(u"&#");
            appendInteger(out, c);
            out.push_back(u';');
        } else {
            out.push_back(c);
        }
    }
    out.push_back(u'"');
}

std::u16string withoutPasswords(Text text) {
    constexpr Text name = u"Password";
    std::u16string masked;
    std::size_t done = 0;
    for (std::size_t at = text.find(name); at != Text::npos; at = text.find(name, at + name.size())) {
        const std::size_t equals = text.find_first_not_of(blanks, at + name.size());
        if (at > 0 && isLetter(text[at - 1])) continue;
        if (at < done || equals == Text::npos || text[equals] != u'=') continue;
        std::size_t value = std::min(text.find_first_not_of(blanks, equals + 1), text.size());
        // What keeps a document from loading may be a quote that is missing.
        const bool quoted = value < text.size() && (text[value] == u'"' || text[value] == u'\'');
        if (quoted) ++value;
        const std::size_t end = quoted ? text.find(text[value - 1], value) : text.find_first_of(u" \t\r\n>", value);
        masked.append(text.substr(done, value - done)).append(u"***");
        done = std::min(end, text.size());
    }
    return masked.append(text.substr(done));
}

}  // namespace quill1xml
