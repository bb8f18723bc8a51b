// Guards the parser from document types that would make small documents large or fetch others.
#pragma once

#include "quill1xml/types.hpp"

#include <span>
#include <string>

namespace quill1xml::platform {

/// Whether a document declares entities or attribute lists, which may have defaults.
bool hasDeclarations(Text document);

/// As above, for a document in any encoding that agrees with ASCII or is UTF-16.
bool hasDeclarations(std::span<const std::uint8_t> document);

}  // namespace quill1xml::platform
