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

BOOL WINAPI endReading(DWORD event) { return event == CTRL_C_EVENT ? TRUE : FALSE; }

/// While it lives, what is typed does not show, and Ctrl+C ends the reading instead of the process.
class Unseen {
public:
    explicit Unseen(HANDLE console) : console_(console) {
        GetConsoleMode(console_, &mode_);
        SetConsoleCtrlHandler(endReading, TRUE);
        SetConsoleMode(console_, ENABLE_PROCESSED_INPUT | ENABLE_LINE_INPUT);
    }

    ~Unseen() {
        SetConsoleMode(console_, mode_);
        SetConsoleCtrlHandler(endReading, FALSE);
    }
    Unseen(const Unseen&) = delete;
    Unseen& operator=(const Unseen&) = delete;

private:
    HANDLE console_;
    DWORD mode_ = 0;
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
        line = readLine(input.get());
    }
    // The line end that was typed did not show either.
    show("\n");
    if (line.empty()) throw std::runtime_error("nothing was typed");
    return fromWide(line);
}

}  // namespace quill1xml::cli
