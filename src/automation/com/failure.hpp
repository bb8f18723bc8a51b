// The border where exceptions become what hosts see: EXCEPINFO, the thread's error object and an HRESULT.
#pragma once

#include "automation/com/quiet_arithmetic.hpp"

#include <windows.h>

#include <oaidl.h>
#include <oleauto.h>

#include <type_traits>

namespace quill1xml::automation {

/// Reports the exception being handled and returns the call's result: DISP_E_EXCEPTION when the host gave a place for
/// the details, else the error's own code. Shortage of memory is E_OUTOFMEMORY alone.
HRESULT reportCurrentException(REFIID interfaceId, EXCEPINFO* details) noexcept;

/// Runs the body of a COM call: every call of every interface, but for those that hosts make between a failure and the
/// look at its error object (IUnknown, ISupportErrorInfo). A body without a result succeeds.
template <class Body>
HRESULT guarded(REFIID interfaceId, EXCEPINFO* details, Body&& body) noexcept {
    const QuietArithmetic quiet;
    // What an earlier call left for the thread would explain a later failure.
    SetErrorInfo(0, nullptr);
    try {
        if constexpr (std::is_void_v<decltype(body())>) {
            body();
            return S_OK;
        } else {
            return body();
        }
    } catch (...) {
        return reportCurrentException(interfaceId, details);
    }
}

}  // namespace quill1xml::automation
