// Attributes of XML that this library writes for itself or for a request, with standard escaping.
#pragma once

#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml {

/// Appends a blank, the name, and the value in quotes, so that any XML parser reads the value back unchanged.
void appendXmlAttribute(std::u16string& out, Text name, Text value);

}  // namespace quill1xml
