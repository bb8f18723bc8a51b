// Tags as this library writes them, whether or not a parser would take them.
#pragma once

#include "quill1xml/types.hpp"

#include <vector>

namespace quill1xml {

/// What starts an element, with its attributes in order. All of it is part of the text that was looked at.
struct Tag {
    struct Attribute {
        Text name;
        Text value;  ///< as written
    };

    Text text;  ///< from "<" to ">", or as far as it goes
    Text name;
    std::vector<Attribute> attributes;
    bool ended = false;  ///< the text has its ">"

    /// The value of an attribute as it is written; empty when there is none.
    Text value(Text attribute) const;
};

/// The start tags in a text. A "<" or ">" within quotes belongs to the value; so does everything behind a quote that is
/// never closed.
std::vector<Tag> tagsIn(Text text);

/// The tag that starts at a place.
Tag tagAt(Text text, std::size_t start);

/// Where the next start tag of a name begins, from a place on; npos when there is none.
std::size_t findTag(Text text, Text name, std::size_t from);

}  // namespace quill1xml
