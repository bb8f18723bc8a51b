// File name patterns as the system reads them.
#pragma once

#include "quill1xml/types.hpp"

namespace quill1xml::platform {

/// Whether a name matches a pattern without regard to case: "*" is any run of characters, "?" any character but a
/// point, or nothing before a point and at the end; a point before either of them may be missing at the end.
bool matchesPattern(Text name, Text pattern);

}  // namespace quill1xml::platform
