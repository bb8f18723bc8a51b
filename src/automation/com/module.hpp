// The DLL as a whole: where it lies and whether it is in use.
#pragma once

#include <windows.h>

#include <string>

namespace quill1xml::automation {

/// The full name of the DLL's file.
std::wstring moduleFile();

void lockModule() noexcept;
void unlockModule() noexcept;
bool isModuleLocked() noexcept;

}  // namespace quill1xml::automation
