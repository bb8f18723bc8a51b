// Failures of the system as the errors that automation hosts know.
#pragma once

#include "quill1xml/error.hpp"
#include "quill1xml/types.hpp"

namespace quill1xml::platform {

/// The Error for a failed call on a file: 53, 57, 61, 67, 70, 75 or 76 with the name in the description.
/// Takes the value of errno after the call.
Error fileError(int code, Text fileName);

}  // namespace quill1xml::platform
