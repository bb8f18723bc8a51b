#include "platform/windows/errors.hpp"

#include "platform/windows/com_support.hpp"

#include <urlmon.h>

#include <cstdio>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

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

/// Failures of transport, which the system has no words for; the codes rise by one from the first.
constexpr HRESULT firstTransportFailure = INET_E_INVALID_URL;
constexpr Text transportFailures[] = {
    u"The URL is not valid",
    u"There is no connection to the Internet",
    u"The server cannot be connected to",
    u"The server or its proxy was not found, or refuses connections",
    u"The server does not have the object",
    u"The server did not send the data",
    u"The transfer failed",
    u"The server asks for a user name and a password",
    u"The server does not send the kind of data that is asked for",
    u"The connection timed out",
    u"The request is not valid",
    u"The protocol is not known",
    u"The security settings do not allow it",
    u"The data cannot be loaded",
    u"An object for the transfer cannot be created",
    u"The usual protocol should be used",
    u"The usual settings should be used",
    u"The usual action should be taken",
    u"The redirection failed",
    u"The redirection leads to a folder",
    u"The request cannot be locked",
    u"The request should be made in another way",
    u"The transfer was stopped",
    u"The certificate of the server is not valid or not trusted",
};

/// Ready for a sentence: without line ends and points at its end.
Text trimmed(Text text) { return text.substr(0, text.find_last_not_of(u" \r\n.") + 1); }

bool isFolder(Text name) {
    const DWORD attributes = GetFileAttributesW(com::wide(std::u16string(name).c_str()));
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// What an object leaves on the thread about a failure.
struct Told {
    std::u16string source;
    std::u16string description;
};

/// Takes it off the thread: it must not explain a later failure.
Told takeErrorInfo() {
    com::ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.put()) != S_OK) return {};
    com::Bstr source;
    com::Bstr description;
    info->GetSource(source.put());
    info->GetDescription(description.put());
    return {std::u16string(source.text()), std::u16string(trimmed(description.text()))};
}

Error errorTold(HRESULT result, Told told, Text subject) {
    const DWORD code = static_cast<DWORD>(HRESULT_CODE(result));
    if (result == E_OUTOFMEMORY) return runtimeError(RuntimeError::outOfMemory);
    if (HRESULT_FACILITY(result) == FACILITY_WIN32) {
        if (const auto known = fileError(code)) return runtimeError(*known, subject);
    }
    const bool runTime = HRESULT_FACILITY(result) == FACILITY_CONTROL && code != 0;
    const std::int32_t number = runTime ? static_cast<std::int32_t>(code) : static_cast<std::int32_t>(result);
    if (told.source.empty()) told.source = u"Quill1XML";
    if (told.description.empty()) {
        told.description = runTime ? runtimeError(static_cast<RuntimeError>(number)).description() : systemText(result);
    }
    if (!subject.empty()) told.description.insert(0, std::u16string(subject).append(u": "));
    return {number, told.source, told.description};
}

}  // namespace

std::u16string systemText(HRESULT result) {
    wchar_t buffer[512];
    std::u16string text;
    const auto transport = static_cast<std::size_t>(static_cast<std::int64_t>(result) - firstTransportFailure);
    if (transport < std::size(transportFailures)) {
        text = transportFailures[transport];
    } else {
        const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                            static_cast<DWORD>(result), 0, buffer, 512, nullptr);
        text = trimmed(com::asText(buffer, length));
    }
    if (text.empty()) text = u"Automation error";
    const int written = swprintf(buffer, 512, L" (0x%08lX)", static_cast<unsigned long>(result));
    return text.append(com::asText(buffer, static_cast<std::size_t>(written)));
}

Error errorOf(HRESULT result, Text subject) {
    takeErrorInfo();
    return errorTold(result, {}, subject);
}

Error errorOf(HRESULT result, IUnknown* object, REFIID interfaceId, Text subject) {
    Told told = takeErrorInfo();
    const auto support = com::query<ISupportErrorInfo>(object, IID_ISupportErrorInfo);
    if (!support || support->InterfaceSupportsErrorInfo(interfaceId) != S_OK) told = {};
    return errorTold(result, std::move(told), subject);
}

void throwLastError(Text fileName) {
    const DWORD code = GetLastError();
    // The system refuses access to a folder as it does to a file that is locked.
    if (code == ERROR_ACCESS_DENIED && isFolder(fileName)) throw runtimeError(RuntimeError::pathFileAccess, fileName);
    if (const auto known = fileError(code)) throw runtimeError(*known, fileName);
    throw runtimeError(RuntimeError::deviceIo, std::u16string(fileName) + u": " + systemText(HRESULT_FROM_WIN32(code)));
}

}  // namespace quill1xml::platform
