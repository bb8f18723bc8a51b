// Text on its way into XML and HTML.
#pragma once

#include <string>
#include <string_view>

namespace quill1xml::sandbox {

/// The text as it may stand in element content and in a quoted attribute value of XML and HTML. Line breaks and tabs
/// survive attribute normalisation; the control characters that XML does not have become "?".
std::string escaped(std::string_view utf8);

}  // namespace quill1xml::sandbox
