#include "automation/com/module.hpp"

#include "platform/windows/errors.hpp"

#include <atomic>

namespace quill1xml::automation {
namespace {

std::atomic<long> locks = 0;

/// With further flags of the call that looks up a module by an address in it.
HMODULE ownModule(DWORD flags) {
    HMODULE module = nullptr;
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | flags, reinterpret_cast<const wchar_t*>(&locks),
                           &module) == FALSE) {
        platform::throwLastError({});
    }
    return module;
}

}  // namespace

std::wstring moduleFile() {
    const HMODULE module = ownModule(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT);
    constexpr DWORD longestName = 32768;
    std::wstring name(longestName, L'\0');
    const DWORD length = GetModuleFileNameW(module, name.data(), longestName);
    if (length == 0) platform::throwLastError({});
    name.resize(length);
    return name;
}

void keepModule() { ownModule(GET_MODULE_HANDLE_EX_FLAG_PIN); }

void lockModule() noexcept { ++locks; }
void unlockModule() noexcept { --locks; }
bool isModuleLocked() noexcept { return locks != 0; }

}  // namespace quill1xml::automation
