// What would keep libxml2 busy for hours: it compares the attributes of a tag, and the names in a declaration, each
// with each, before anyone can stop it.
#pragma once

#include "quill1xml/limits.hpp"

#include <cstddef>
#include <string_view>

#include <libxml/parser.h>

namespace quill1xml::platform {

inline constexpr std::size_t maximumSize = 1024u * 1024 * 1024;  ///< of a document, in bytes
inline constexpr std::size_t maximumAttributes = limits::attributes;
inline constexpr std::size_t maximumDocumentType = 64 * 1024;  ///< in bytes

/// What in a document is beyond these limits, for people; empty when nothing is. Takes time in proportion to the size.
/// It knows the first two limits, and one for documents with many tags of more than 400 attributes. Looks for ASCII, in
/// units of one byte, or of the two or four in which the document begins.
std::u16string_view excessIn(std::string_view document);

/// What is beyond further limits, of levels, namespaces and names, where a parser meets an element below so many
/// others; empty when nothing is.
std::u16string_view excessAt(const xmlParserCtxt& parser, int depth);

}  // namespace quill1xml::platform
