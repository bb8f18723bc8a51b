// Objects of the system's components, by the name of their class.
#pragma once

#include "platform/windows/com_support.hpp"
#include "platform/windows/errors.hpp"

namespace quill1xml::platform {

/// A new object of an in-process class. The thread must have initialised COM; the Error says so when it has not.
/// Error 429, with the system's own reason, when the object cannot be had.
template <class Interface>
com::ComPtr<Interface> createObject(const char16_t* className, REFIID id) {
    CLSID classId;
    com::ComPtr<Interface> object;
    HRESULT result = CLSIDFromProgID(com::wide(className), &classId);
    if (SUCCEEDED(result)) {
        result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, id, object.putVoid());
    }
    if (result == CO_E_NOTINITIALIZED) {
        throw Error(result, u"Quill1XML", std::u16string(className) + u": the thread has not initialised COM");
    }
    if (FAILED(result)) {
        throw runtimeError(RuntimeError::cannotCreateObject, std::u16string(className) + u": " + systemText(result));
    }
    return object;
}

}  // namespace quill1xml::platform
