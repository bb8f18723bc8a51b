// Files of the system, for its own other parts.
#pragma once

#include "quill1xml/types.hpp"

#include <string_view>

namespace quill1xml::platform {

/// Writes the bytes to a file that starts anew. Fails as Files::writeText does.
void writeBytes(Text fileName, std::string_view bytes);

/// The whole file. Fails as Files::readBytes does.
Bytes readBytes(Text fileName);

}  // namespace quill1xml::platform
