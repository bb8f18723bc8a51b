// What would keep libxml2 busy for hours: it compares the attributes of a tag, and the names in a declaration, each
// with each, before anyone can stop it.
#pragma once

#include "quill1xml/limits.hpp"

#include <cstddef>
#include <string_view>

namespace quill1xml::platform {

inline constexpr std::size_t maximumAttributes = limits::attributes;
inline constexpr std::size_t maximumDocumentType = 64 * 1024;  ///< in bytes
inline constexpr int maximumNamespaces = 64;                   ///< in scope; every prefix is looked for in all
inline constexpr int maximumNames = 100'000;                   ///< the library's table of names does not grow with them

/// What in a document is beyond these limits, for people; empty when nothing is. Takes time in proportion to the size.
/// It knows the first two limits, and one for documents with many tags of more than 400 attributes. Looks for ASCII, in
/// units of one byte, or of the two or four in which the document begins.
std::u16string_view excessIn(std::string_view document);

}  // namespace quill1xml::platform
