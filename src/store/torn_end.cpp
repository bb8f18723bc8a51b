#include "store/torn_end.hpp"

#include "text/numbers.hpp"
#include "text/tags.hpp"

#include <cstdint>

namespace quill1xml::store {
namespace {

constexpr std::size_t none = Text::npos;
constexpr Text nameEnds = u" \t\r\n/>";

/// Behind the tag that begins at a place.
std::size_t tagEnd(Text packet, std::size_t start) {
    char16_t quote = 0;
    for (std::size_t i = start; i < packet.size(); ++i) {
        const char16_t c = packet[i];
        if (quote == 0 && c == u'>') return i + 1;
        if (c == quote) {
            quote = 0;
        } else if (quote == 0 && (c == u'"' || c == u'\'')) {
            quote = c;
        }
    }
    return none;
}

/// The last start tag of a name that is all there; the first one stands at a place.
std::size_t lastStart(Text packet, std::size_t first, Text opening) {
    std::size_t start = packet.rfind(opening);
    while (start != none && start > first) {
        const std::size_t behind = start + opening.size();
        if (behind < packet.size() && nameEnds.find(packet[behind]) != none) return start;
        start = packet.rfind(opening, start - 1);
    }
    return first;
}

/// Where the record that is not all there begins; none when there is no such record.
std::size_t tornRecord(Text packet) {
    // What ends in a bracket may hold a mistake of another kind, and that is the parser's to tell.
    const std::size_t last = packet.find_last_not_of(u" \t\r\n");
    const bool breaksOff = last != none && packet[last] != u'>';
    std::size_t first = packet.find(u'<');
    if (first == none) return none;
    if (tagAt(packet, first).name == u"Store") {
        const std::size_t inside = tagEnd(packet, first);
        if (inside == none) return breaksOff ? first : none;
        first = packet.find(u'<', inside);
        if (first == none) return none;
    }
    // All records of a packet have one name, which nothing inside them has.
    const std::u16string name(tagAt(packet, first).name);
    const std::size_t start = lastStart(packet, first, u"<" + name);
    std::size_t end = tagEnd(packet, start);
    if (end == none) return breaksOff ? start : none;
    if (packet[end - 2] != u'/') {
        const std::u16string closing = u"</" + name + u">";
        end = packet.find(closing, end);
        if (end == none) return start;
        end += closing.size();
    }
    const std::size_t next = packet.find_first_not_of(u" \t\r\n", end);
    // A file system may put null characters where data was lost.
    const bool begun = next != none && (packet[next] == u'<' || packet[next] == u'\0');
    return begun && breaksOff && tagEnd(packet, next) == none ? next : none;
}

}  // namespace

std::u16string accountOfTornEnd(Text fileName, Text packet) {
    const std::size_t start = tornRecord(packet);
    if (start == none) return {};
    std::u16string text = u"The last record of ";
    text.append(fileName).append(u" is not all there. It starts at byte ");
    // The byte-order mark is no part of the text.
    appendInteger(text, static_cast<std::int64_t>((start + 1) * sizeof(char16_t)));
    return text.append(u": cut the file off there and add the record again.");
}

}  // namespace quill1xml::store
