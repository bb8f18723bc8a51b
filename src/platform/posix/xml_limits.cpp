#include "platform/posix/xml_limits.hpp"

#include <algorithm>
#include <array>
#include <string>

#include <libxml/dict.h>

namespace quill1xml::platform {
namespace {

/// How a document in units of several bytes begins, and which byte of a unit has the ASCII.
struct Beginning {
    std::string_view bytes;
    std::size_t width;
    std::size_t place;
};

using namespace std::string_view_literals;
constexpr std::array beginnings{Beginning{"\0\0\0<"sv, 4, 3},  Beginning{"<\0\0\0"sv, 4, 0},
                                Beginning{"\0\0<\0"sv, 4, 2},  Beginning{"\0<\0\0"sv, 4, 1},
                                Beginning{"\xFE\xFF"sv, 2, 1}, Beginning{"\xFF\xFE"sv, 2, 0},
                                Beginning{"\0<\0?"sv, 2, 1},   Beginning{"<\0?\0"sv, 2, 0}};

/// A document of such units in one byte for each: itself where it is ASCII, one that is not otherwise.
std::string narrowed(std::string_view document, const Beginning& beginning) {
    constexpr char notAscii = '\x80';
    std::string text(document.size() / beginning.width, notAscii);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view unit = document.substr(i * beginning.width, beginning.width);
        const auto zeros = static_cast<std::size_t>(std::ranges::count(unit, '\0'));
        if (zeros == beginning.width - 1) text[i] = unit[beginning.place];
    }
    return text;
}

/// Takes everything up to a text and with it, or all when it does not occur.
void takePast(std::string_view& rest, std::string_view end) {
    const std::size_t at = rest.find(end);
    rest.remove_prefix(at == std::string_view::npos ? rest.size() : at + end.size());
}

/// Takes the inside of a tag or declaration, up to its end or the next one. Returns how many quoted texts it has.
/// No quoted text holds a "<": the parser goes on behind a mistake, and is not to find more there than is found here.
std::size_t takeTag(std::string_view& rest) {
    std::size_t quoted = 0;
    while (!rest.empty() && rest.front() != '<') {
        const char c = rest.front();
        rest.remove_prefix(1);
        if (c == '>') break;
        if (c != '"' && c != '\'') continue;
        const std::string_view text = rest.substr(0, rest.find(c));
        rest.remove_prefix(std::min(text.find('<'), text.size()));
        if (rest.starts_with(c)) rest.remove_prefix(1);
        ++quoted;
    }
    return quoted;
}

/// How often attributes may be compared with each other: always up to 400 a tag, and some longer tags in any document.
constexpr std::size_t comparisonsPerByte = 50;
constexpr std::size_t comparisonsInAny = 2 * maximumAttributes * maximumAttributes;

std::u16string_view excessInNarrow(std::string_view document) {
    constexpr std::size_t shortestAttribute = sizeof(" a=''") - 1;
    static_assert(shortestAttribute * maximumAttributes < maximumDocumentType);
    if (document.size() < shortestAttribute * maximumAttributes) return {};
    std::string_view rest = document;
    const std::size_t allowed = comparisonsInAny + comparisonsPerByte * document.size();
    std::size_t comparisons = 0;
    std::size_t declared = 0;
    while (true) {
        rest.remove_prefix(std::min(rest.find('<'), rest.size()));
        if (rest.empty()) return {};
        if (rest.starts_with("<!--")) {
            takePast(rest, "-->");
        } else if (rest.starts_with("<![CDATA[")) {
            takePast(rest, "]]>");
        } else if (rest.starts_with("<?")) {
            takePast(rest, "?>");
        } else {
            const bool declaration = rest.starts_with("<!");
            const std::size_t before = rest.size();
            rest.remove_prefix(1);
            const std::size_t attributes = takeTag(rest);
            static_assert(maximumAttributes == 10'000, "as the message says");
            if (attributes > maximumAttributes) return u"A tag has more than 10000 attributes";
            comparisons += attributes * attributes;
            if (comparisons > allowed) return u"Too many tags have hundreds of attributes";
            if (declaration) declared += before - rest.size();
            if (declared > maximumDocumentType) return u"The document type is longer than 64 KiB";
        }
    }
}

}  // namespace

std::u16string_view excessIn(std::string_view document) {
    constexpr std::size_t shortestAttribute = sizeof(" a=''") - 1;
    static_assert(shortestAttribute * maximumAttributes < maximumDocumentType);
    if (document.size() < shortestAttribute * maximumAttributes) return {};
    for (const Beginning& beginning : beginnings) {
        if (document.starts_with(beginning.bytes)) return excessInNarrow(narrowed(document, beginning));
    }
    return excessInNarrow(document);
}

std::u16string_view excessAt(const xmlParserCtxt& parser, int depth) {
    constexpr int maximumDepth = 256;
    constexpr int maximumNamespaces = 64;  // in scope; every prefix is looked for in all
    constexpr int maximumNames = 100'000;  // the library's table of names does not grow with them
    if (depth >= maximumDepth) return u"Elements are nested more than 256 levels deep";
    const int declared = parser.nsNr / 2;  // prefixes and names take turns
    if (declared > maximumNamespaces) return u"More than 64 namespaces are declared";
    if (xmlDictSize(parser.dict) > maximumNames) return u"There are more than 100000 different names";
    return {};
}

}  // namespace quill1xml::platform
