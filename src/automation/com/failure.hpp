// The border where exceptions become what hosts see: EXCEPINFO, the thread's error object and an HRESULT.
#pragma once

#include <windows.h>

#include <oaidl.h>

namespace quill1xml::automation {

/// Reports the exception being handled and returns the call's result: DISP_E_EXCEPTION when the host gave a place for
/// the details, else the error's own code. Shortage of memory is E_OUTOFMEMORY alone.
HRESULT reportCurrentException(REFIID interfaceId, EXCEPINFO* details) noexcept;

/// Runs the body of a COM call.
template <class Body>
HRESULT guarded(REFIID interfaceId, EXCEPINFO* details, Body&& body) noexcept {
    try {
        return body();
    } catch (...) {
        return reportCurrentException(interfaceId, details);
    }
}

}  // namespace quill1xml::automation
