// Documents of libxml2.
#pragma once

#include "platform/posix/xml_schema.hpp"

namespace quill1xml::platform {

/// Wraps a tree. The URL is where it came from, for the errors of validation; the schema may be null.
std::unique_ptr<Document> makeDocument(TreeOwner tree, std::shared_ptr<const XsdSchema> schema, Text url);

/// Parses UTF-8, whatever encoding it declares: that is the one to save in. Null, with the error filled, when it is not
/// well-formed. The schema may be null.
std::unique_ptr<Document> parseUtf8(std::string_view document, std::shared_ptr<const XsdSchema> schema,
                                    ParseError& error);

/// The tree behind a document, borrowed. Requires a document of this platform.
xmlDoc* treeOf(const Document& document);

}  // namespace quill1xml::platform
