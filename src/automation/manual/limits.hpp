// What the library gives up on.
#pragma once

#include <string>

namespace quill1xml::automation {

/// In two sentences, for the manual and for help.
std::string limitsText();

}  // namespace quill1xml::automation
