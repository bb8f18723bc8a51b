// Failures of the system as the errors that automation hosts know.
#pragma once

#include "quill1xml/error.hpp"
#include "quill1xml/types.hpp"

#include <windows.h>

namespace quill1xml::platform {

/// The Error for a failed COM call: what the object told the thread about it, else the system's message.
/// - Run-time errors (facility CONTROL) become their number, shortage of memory becomes 7.
/// - Failures of files become 53, 57, 61, 67, 70, 75 or 76, with the subject in the description.
/// - Anything else keeps the code as its number.
/// The subject, where one is given, is the file, host or class the call was about.
Error errorOf(HRESULT result, Text subject = {});

/// Throws errorOf a failure.
inline void check(HRESULT result, Text subject = {}) {
    if (FAILED(result)) throw errorOf(result, subject);
}

/// Throws the Error for the last failure of a file call.
[[noreturn]] void throwLastError(Text fileName);

}  // namespace quill1xml::platform
