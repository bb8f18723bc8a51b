#include "automation/com/failure.hpp"

#include "platform/windows/com_support.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

namespace quill1xml::automation {
namespace {

/// Hosts know run-time errors by this code with the number added.
constexpr std::uint32_t runTimeErrors = 0x800A0000;

HRESULT codeOf(std::int32_t number) {
    const bool isRunTimeError = number >= 1 && number <= 0xFFFF;
    return isRunTimeError ? static_cast<HRESULT>(runTimeErrors + static_cast<std::uint32_t>(number)) : number;
}

void tellThread(REFIID interfaceId, BSTR source, BSTR description) {
    com::ComPtr<ICreateErrorInfo> info;
    if (FAILED(CreateErrorInfo(info.put()))) return;
    info->SetGUID(interfaceId);
    info->SetSource(source);
    info->SetDescription(description);
    if (const auto told = com::query<IErrorInfo>(info.get(), IID_IErrorInfo)) SetErrorInfo(0, told.get());
}

HRESULT report(const Error& error, REFIID interfaceId, EXCEPINFO* details) {
    com::Bstr source(error.source());
    com::Bstr description(error.description());
    tellThread(interfaceId, source.get(), description.get());
    const HRESULT code = codeOf(error.number());
    // A number that is no failure code must not pass for success.
    if (details == nullptr) return FAILED(code) ? code : DISP_E_EXCEPTION;
    *details = {};
    details->scode = code;
    details->bstrSource = source.detach();
    details->bstrDescription = description.detach();
    return DISP_E_EXCEPTION;
}

}  // namespace

HRESULT reportCurrentException(REFIID interfaceId, EXCEPINFO* details) noexcept {
    try {
        try {
            throw;
        } catch (const Error& error) {
            return report(error, interfaceId, details);
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& error) {
            return report(runtimeError(RuntimeError::internalError, toUtf16(error.what())), interfaceId, details);
        }
    } catch (...) {
        SetErrorInfo(0, nullptr);
        return E_OUTOFMEMORY;
    }
}

}  // namespace quill1xml::automation
