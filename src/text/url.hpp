// Locations that hosts give: files or URLs.
#pragma once

#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml {

bool isHttpUrl(Text location);
bool isFileUrl(Text location);

/// An http or https URL as it may be shown: without credentials and query.
std::u16string printableUrl(Text url);

}  // namespace quill1xml
