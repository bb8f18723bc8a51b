// What a parser's report quotes of a document.
#pragma once

#include "quill1xml/types.hpp"

#include <cstddef>
#include <string>

namespace quill1xml::platform {

/// The part of a line around an offset, of about 200 characters: a document may be one line of megabytes. Where it
/// starts inside an attribute, the attribute's name stands before it, so that a reader knows a secret for one.
std::u16string excerpt(Text line, std::size_t offset);

}  // namespace quill1xml::platform
