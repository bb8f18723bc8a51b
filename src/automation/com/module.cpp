#include "automation/com/module.hpp"

#include "platform/windows/errors.hpp"

#include <atomic>

namespace quill1xml::automation {
namespace {

std::atomic<long> locks = 0;

}  // namespace

std::wstring moduleFile() {
    HMODULE module = nullptr;
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<const wchar_t*>(&locks), &module) == FALSE) {
        platform::throwLastError({});
    }
    constexpr DWORD longestName = 32768;
    std::wstring name(longestName, L'\0');
    const DWORD length = GetModuleFileNameW(module, name.data(), longestName);
    if (length == 0) platform::throwLastError({});
    name.resize(length);
    return name;
}

void lockModule() noexcept { ++locks; }
void unlockModule() noexcept { --locks; }
bool isModuleLocked() noexcept { return locks != 0; }

}  // namespace quill1xml::automation
