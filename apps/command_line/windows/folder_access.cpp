#include "command_line/folder_access.hpp"

#include "command_line/windows/wide.hpp"

#include <windows.h>

namespace quill1xml::cli {
namespace {

std::error_code lastError() {
    switch (GetLastError()) {
        case ERROR_ACCESS_DENIED:
        case ERROR_WRITE_PROTECT: return std::make_error_code(std::errc::permission_denied);
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_INVALID_DRIVE:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME: return std::make_error_code(std::errc::no_such_file_or_directory);
        default: return std::make_error_code(std::errc::io_error);
    }
}

}  // namespace

std::error_code whyNotWritable(const std::string& folder) {
    const std::wstring name = toWide(folder);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return lastError();
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return std::make_error_code(std::errc::not_a_directory);
    // Its read-only attribute says nothing: whether a file may be added is asked by opening it for that.
    constexpr DWORD everyone = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE opened =
        CreateFileW(name.c_str(), FILE_ADD_FILE, everyone, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return lastError();
    CloseHandle(opened);
    return {};
}

}  // namespace quill1xml::cli
