#include "command_line/interruption.hpp"

#include <windows.h>

#include <atomic>

namespace quill1xml::cli {
namespace {

std::atomic<bool> asked = false;

/// Runs in a thread of the system's.
BOOL WINAPI note(DWORD event) {
    if (asked.exchange(true)) return FALSE;
    // When this returns from any other event, the process ends.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(INFINITE);
    return TRUE;
}

}  // namespace

Interruption::Interruption() {
    asked = false;
    SetConsoleCtrlHandler(note, TRUE);
}

Interruption::~Interruption() { SetConsoleCtrlHandler(note, FALSE); }

bool Interruption::isAsked() const noexcept { return asked; }

}  // namespace quill1xml::cli
