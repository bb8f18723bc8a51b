// Trees of libxml2 as text.
#pragma once

#include <string>

#include <libxml/tree.h>

namespace quill1xml::platform {

/// Appends a document in UTF-8, without its XML declaration, as libxml2 would write it but several times faster: every
/// packet is written once more to be posted. Returns false, and leaves the text as it was, for a document that has more
/// than elements, attributes and texts: libxml2 writes the others.
bool appendPlainTree(std::string& text, const xmlDoc& document);

}  // namespace quill1xml::platform
