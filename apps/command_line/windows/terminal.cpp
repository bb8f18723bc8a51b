#include "command_line/terminal.hpp"

#include "command_line/windows/console.hpp"
#include "command_line/windows/wide.hpp"

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace quill1xml::cli {
namespace {

struct Close {
    void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, Close>;

/// The console of the process, wherever its standard handles lead.
Handle openConsole(const wchar_t* name) {
    const HANDLE opened = CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    if (opened == INVALID_HANDLE_VALUE || !isConsole(opened)) {
        throw std::runtime_error("there is no terminal to ask on");
    }
    return Handle(opened);
}

/// Before an interrupt ends the process.
BOOL WINAPI showAgain(DWORD) {
    const HANDLE console = CreateFileW(L"CONIN$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                       nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD mode = 0;
    if (GetConsoleMode(console, &mode) != 0) SetConsoleMode(console, mode | ENABLE_ECHO_INPUT);
    return FALSE;
}

/// While it lives, what is typed does not show.
class Unseen {
public:
    explicit Unseen(HANDLE console) : console_(console) {
        GetConsoleMode(console_, &mode_);
        SetConsoleCtrlHandler(showAgain, TRUE);
        const DWORD lines = mode_ | ENABLE_LINE_INPUT | ENABLE_PROCESSED_INPUT;
        hidden_ = SetConsoleMode(console_, lines & ~DWORD{ENABLE_ECHO_INPUT}) != 0;
    }

    bool hidden() const { return hidden_; }

    ~Unseen() {
        SetConsoleMode(console_, mode_);
        SetConsoleCtrlHandler(showAgain, FALSE);
    }
    Unseen(const Unseen&) = delete;
    Unseen& operator=(const Unseen&) = delete;

private:
    HANDLE console_;
    DWORD mode_ = 0;
    bool hidden_ = false;
};

std::wstring readLine(HANDLE console) {
    std::wstring line;
    while (!line.ends_with(L'\n')) {
        wchar_t part[256];
        DWORD count = 0;
        SetLastError(ERROR_SUCCESS);
        const BOOL read = ReadConsoleW(console, part, 256, &count, nullptr);
        if (GetLastError() == ERROR_OPERATION_ABORTED) throw std::runtime_error("interrupted");
        if (read == 0) throw std::runtime_error("the terminal cannot be read");
        if (count == 0) break;
        line.append(part, count);
    }
    return line.substr(0, line.find_first_of(L"\r\n\x1A"));
}

}  // namespace

bool outputIsTerminal() { return isConsole(GetStdHandle(STD_OUTPUT_HANDLE)); }
bool outputIsPipe() { return GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_PIPE; }

bool errorOutputIsTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0 &&
           (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::size_t terminalWidth() {
    CONSOLE_SCREEN_BUFFER_INFO screen{};
    if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &screen) == 0) return 80;
    return static_cast<std::size_t>(std::max(1, screen.srWindow.Right - screen.srWindow.Left + 1));
}

std::string askUnseen(const std::string& prompt) {
    const Handle input = openConsole(L"CONIN$");
    const Handle output = openConsole(L"CONOUT$");
    ConsoleOutput screen(output.get());
    const auto show = [&screen](const std::string& text) {
        screen.sputn(text.data(), static_cast<std::streamsize>(text.size()));
        screen.pubsync();
    };
    show(prompt);
    std::wstring line;
    {
        const Unseen unseen(input.get());
        if (!unseen.hidden()) throw std::runtime_error("the terminal would show it");
        line = readLine(input.get());
    }
    // The line end that was typed did not show either.
    show("\n");
    if (line.empty()) throw std::runtime_error("nothing was typed");
    return fromWide(line);
}

}  // namespace quill1xml::cli
