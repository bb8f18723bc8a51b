#include "platform/posix/xml_limits.hpp"

#include <algorithm>

namespace quill1xml::platform {
namespace {

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

}  // namespace

std::u16string_view excessIn(std::string_view document) {
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
            if (attributes > maximumAttributes) return u"A tag has more than 10000 attributes";
            comparisons += attributes * attributes;
            if (comparisons > allowed) return u"Too many tags have hundreds of attributes";
            if (declaration) declared += before - rest.size();
            if (declared > maximumDocumentType) return u"The document type is longer than 64 KiB";
        }
    }
}

}  // namespace quill1xml::platform
