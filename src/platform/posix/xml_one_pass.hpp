// Documents that are parsed, validated and written anew in one pass, without a tree.
#pragma once

#include "platform/posix/xml_schema.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace quill1xml::platform {

/// What the tree of a document in UTF-8 would be written as, with its XML declaration but without an encoding in it.
/// Nothing where the document is not well-formed or not valid, is beyond a limit, or has more than elements, attributes
/// and texts: its tree tells more.
std::optional<std::string> textIfValid(std::string_view document, const XsdSchema& schema);

}  // namespace quill1xml::platform
