// A call of every method of Store, for the manual.
#pragma once

#include "automation/classes.hpp"

namespace quill1xml::automation {

/// The argument struct of a method's example, which lives as long as the program; null where there is none.
const void* exampleArguments(const Member& method);

}  // namespace quill1xml::automation
