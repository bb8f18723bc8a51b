#include "platform/windows/errors.hpp"

#include "platform/windows/com_support.hpp"

#include <cstdio>
#include <optional>
#include <string>

namespace quill1xml::platform {
namespace {

constexpr DWORD diskQuotaExceeded = 1295;  // missing from the headers

std::optional<RuntimeError> fileError(DWORD code) {
    switch (code) {
        case ERROR_FILE_NOT_FOUND: return RuntimeError::fileNotFound;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_DIRECTORY:
        case ERROR_INVALID_DRIVE:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME: return RuntimeError::pathNotFound;
        case ERROR_TOO_MANY_OPEN_FILES: return RuntimeError::tooManyFiles;
        case ERROR_ACCESS_DENIED:
        case ERROR_WRITE_PROTECT:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION: return RuntimeError::permissionDenied;
        case ERROR_HANDLE_DISK_FULL:
        case ERROR_DISK_FULL:
        case diskQuotaExceeded: return RuntimeError::diskFull;
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_FILENAME_EXCED_RANGE:
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS: return RuntimeError::pathFileAccess;
        default: return std::nullopt;
    }
}

std::u16string systemMessage(HRESULT result) {
    wchar_t buffer[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  static_cast<DWORD>(result), 0, buffer, 512, nullptr);
    while (length > 0 && (buffer[length - 1] == L'\r' || buffer[length - 1] == L'\n')) --length;
    if (length > 0) return std::u16string(com::asText(buffer, length));
    const int written = swprintf(buffer, 512, L"Automation error (0x%08lX)", static_cast<unsigned long>(result));
    return std::u16string(com::asText(buffer, static_cast<std::size_t>(written)));
}

bool isFolder(Text name) {
    const DWORD attributes = GetFileAttributesW(com::wide(std::u16string(name).c_str()));
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// What the failed object left for the thread. Taking it also keeps it from explaining a later failure.
struct Told {
    std::u16string source;
    std::u16string description;
};

Told takeErrorInfo() {
    com::ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.put()) != S_OK) return {};
    com::Bstr source;
    com::Bstr description;
    info->GetSource(source.put());
    info->GetDescription(description.put());
    return {std::u16string(source.text()), std::u16string(description.text())};
}

}  // namespace

Error errorOf(HRESULT result, Text subject) {
    Told told = takeErrorInfo();
    const DWORD code = static_cast<DWORD>(HRESULT_CODE(result));
    if (result == E_OUTOFMEMORY) return runtimeError(RuntimeError::outOfMemory);
    if (HRESULT_FACILITY(result) == FACILITY_WIN32) {
        if (const auto known = fileError(code)) return runtimeError(*known, subject);
    }
    const bool runTime = HRESULT_FACILITY(result) == FACILITY_CONTROL && code != 0;
    const std::int32_t number = runTime ? static_cast<std::int32_t>(code) : static_cast<std::int32_t>(result);
    if (told.source.empty()) told.source = u"Quill1XML";
    if (told.description.empty()) {
        told.description =
            runTime ? runtimeError(static_cast<RuntimeError>(number)).description() : systemMessage(result);
    }
    if (!subject.empty()) told.description.insert(0, std::u16string(subject).append(u": "));
    return {number, told.source, told.description};
}

void throwLastError(Text fileName) {
    const DWORD code = GetLastError();
    // The system refuses access to a folder as it does to a file that is locked.
    if (code == ERROR_ACCESS_DENIED && isFolder(fileName)) throw runtimeError(RuntimeError::pathFileAccess, fileName);
    if (const auto known = fileError(code)) throw runtimeError(*known, fileName);
    throw runtimeError(RuntimeError::deviceIo,
                       std::u16string(fileName) + u" (" + systemMessage(HRESULT_FROM_WIN32(code)) + u")");
}

}  // namespace quill1xml::platform
