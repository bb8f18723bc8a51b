// File name patterns of "*" and "?".
#pragma once

#include "quill1xml/types.hpp"

namespace quill1xml {

/// Whether a whole name matches a pattern: "*" stands for any run of characters, an empty one too, "?" for one UTF-16
/// unit. Ignoring case covers the letters of ASCII and Latin-1.
bool matchesWildcard(Text name, Text pattern, bool ignoreCase);

}  // namespace quill1xml
