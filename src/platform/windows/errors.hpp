// Failures of the system as the errors that automation hosts know.
#pragma once

#include "platform/windows/com_support.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/types.hpp"

#include <windows.h>

#include <concepts>
#include <string>

namespace quill1xml::platform {

/// The system's words for a failure, ready to stand in a sentence, with the code in hexadecimal.
std::u16string systemText(HRESULT result);

/// The Error for a failed call of the system.
/// - Run-time errors (facility CONTROL) become their number, shortage of memory becomes 7.
/// - Failures of files become 53, 57, 61, 67, 70, 75 or 76, with the subject in the description.
/// - Anything else keeps the code as its number.
/// The subject, where one is given, is the file, host or class the call was about.
/// What lies on the thread belongs to an earlier failure; it is cleared, so as not to explain a later one either.
Error errorOf(HRESULT result, Text subject = {});

/// As above, for a call of an object's interface: where the object says that it explains failures of that interface,
/// source and description are what it told the thread.
Error errorOf(HRESULT result, IUnknown* object, REFIID interfaceId, Text subject = {});

/// Throws errorOf a failure.
inline void check(HRESULT result, Text subject = {}) {
    if (FAILED(result)) throw errorOf(result, subject);
}

/// The id of an interface, for those whose calls are checked.
template <class Interface>
extern const IID interfaceId;

template <std::derived_from<IUnknown> Interface>
void check(HRESULT result, Interface* object, Text subject = {}) {
    if (FAILED(result)) throw errorOf(result, object, interfaceId<Interface>, subject);
}

template <class Interface>
void check(HRESULT result, const com::ComPtr<Interface>& object, Text subject = {}) {
    check(result, object.get(), subject);
}

/// Throws the Error for the last failure of a file call.
[[noreturn]] void throwLastError(Text fileName);

}  // namespace quill1xml::platform
