// Documents that are only sent on: nobody looks into most of them.
#pragma once

#include "platform/posix/xml_schema.hpp"

namespace quill1xml::platform {

/// A document in UTF-8 that is valid, without its tree: that is made when somebody asks for an element. Null when the
/// document has to be parsed whole to tell what is the matter with it, or how it is written.
std::unique_ptr<Document> parseValid(std::string_view document, std::shared_ptr<const XsdSchema> schema);

}  // namespace quill1xml::platform
