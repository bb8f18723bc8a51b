// The reference manual, derived from the declarations.
#pragma once

#include <string>

namespace quill1xml::automation {

/// The manual in Markdown, UTF-8: every class, member, parameter, default, attribute, condition, limit and message.
std::string manual();

/// What the library gives up on, in two sentences for the manual and for help.
std::string limitsText();

}  // namespace quill1xml::automation
