// Untrusted XML into trees of libxml2.
#pragma once

#include "platform/ports.hpp"

#include <memory>
#include <string_view>

#include <libxml/tree.h>
#include <libxml/xmlerror.h>

namespace quill1xml::platform {

struct FreeTree {
    void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};
using TreeOwner = std::unique_ptr<xmlDoc, FreeTree>;

/// Parses a document of at most 1 GiB and 256 levels. Nothing outside the document is read, and a document that
/// declares entities or default attributes is refused: both make small documents large.
/// Returns null and fills the error when it is refused or not well-formed. The file position is in bytes.
TreeOwner parseTree(std::string_view document, SourceEncoding encoding, ParseError& error);

/// The code, the reason and, where known, the line of an error. The error may lack a message.
ParseError parseErrorOf(const xmlError& error);

/// The line of the end of an element's start tag; libxml2 itself loses count at 65535.
Long lineOf(const xmlNode* element);

/// At most the given number of UTF-8 bytes of a text, without cutting a character.
std::string_view firstBytes(std::string_view text, std::size_t count);

inline std::string_view view(const xmlChar* text) { return reinterpret_cast<const char*>(text); }

}  // namespace quill1xml::platform
