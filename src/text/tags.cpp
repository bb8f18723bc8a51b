#include "text/tags.hpp"

#include <algorithm>

namespace quill1xml {
namespace {

constexpr Text blanks = u" \t\r\n";
constexpr Text nameEnds = u" \t\r\n/>=";

std::size_t skip(Text text, std::size_t from, Text characters) {
    return std::min(text.find_first_not_of(characters, from), text.size());
}

std::size_t endOfName(Text text, std::size_t from) { return std::min(text.find_first_of(nameEnds, from), text.size()); }

}  // namespace

Text Tag::value(Text attribute) const {
    const auto found = std::ranges::find(attributes, attribute, &Attribute::name);
    return found == attributes.end() ? Text() : found->value;
}

Tag tagAt(Text text, std::size_t start) {
    Tag tag;
    std::size_t at = endOfName(text, start + 1);
    tag.name = text.substr(start + 1, at - start - 1);
    constexpr std::size_t usual = 16;
    tag.attributes.reserve(usual);
    while ((at = skip(text, at, blanks)) < text.size() && text[at] != u'>') {
        const std::size_t nameEnd = endOfName(text, at);
        const std::size_t open = skip(text, nameEnd, u" \t\r\n=");
        const bool quoted = nameEnd > at && open < text.size() && (text[open] == u'"' || text[open] == u'\'');
        if (!quoted) {
            at = std::max(nameEnd, at + 1);
            continue;
        }
        const std::size_t close = std::min(text.find(text[open], open + 1), text.size());
        tag.attributes.push_back({text.substr(at, nameEnd - at), text.substr(open + 1, close - open - 1)});
        at = close + 1;
    }
    tag.ended = at < text.size();
    tag.text = text.substr(start, tag.ended ? at + 1 - start : Text::npos);
    return tag;
}

std::vector<Tag> tagsIn(Text text) {
    std::vector<Tag> tags;
    std::size_t at = 0;
    while ((at = text.find(u'<', at)) != Text::npos) {
        const bool starts =
            at + 1 < text.size() && text[at + 1] != u'/' && text[at + 1] != u'!' && text[at + 1] != u'?';
        if (!starts) {
            ++at;
            continue;
        }
        tags.push_back(tagAt(text, at));
        at += tags.back().text.size();
    }
    return tags;
}

std::size_t findTag(Text text, Text name, std::size_t from) {
    for (std::size_t at = from; (at = text.find(u'<', at)) != Text::npos; ++at) {
        const Text rest = text.substr(at + 1);
        if (!rest.starts_with(name) || rest.size() == name.size()) continue;
        if (nameEnds.find(rest[name.size()]) != Text::npos) return at;
    }
    return Text::npos;
}

}  // namespace quill1xml
