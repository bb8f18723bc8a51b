// The DLL as a whole: where it lies and whether it is in use.
#pragma once

#include <windows.h>

#include <string>

namespace quill1xml::automation {

/// The full name of the DLL's file.
std::wstring moduleFile();

/// Keeps the DLL loaded until the process ends, whatever the host unloads: with each load the run-time library takes
/// one of the process's thousand thread-local slots, some handles and memory, and never gives them back.
void keepModule();

void lockModule() noexcept;
void unlockModule() noexcept;
bool isModuleLocked() noexcept;

}  // namespace quill1xml::automation
