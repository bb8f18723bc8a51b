#include "command_line/process.hpp"

#include "command_line/windows/console.hpp"
#include "command_line/windows/wide.hpp"

#include <objbase.h>
#include <shellapi.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <iostream>
#include <new>
#include <utility>

namespace quill1xml::cli {
namespace {

/// Carries the bytes of a stream as they are; no line end is changed.
void makeBinary(std::FILE* file) { _setmode(_fileno(file), _O_BINARY); }

/// Lets a stream write to the console, where it does.
class Output {
public:
    Output(std::ostream& stream, std::FILE* file, DWORD handle)
        : stream_(stream), console_(GetStdHandle(handle)), buffer_(console_) {
        if (isConsole(console_)) {
            GetConsoleMode(console_, &mode_);
            usual_ = stream_.rdbuf(&buffer_);
            // The bar is redrawn by sequences; where the console knows none, it is not drawn.
            SetConsoleMode(console_, mode_ | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
        } else {
            makeBinary(file);
        }
    }

    ~Output() {
        if (usual_ == nullptr) return;
        stream_.flush();
        stream_.rdbuf(usual_);
        SetConsoleMode(console_, mode_);
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

private:
    std::ostream& stream_;
    HANDLE console_;
    ConsoleOutput buffer_;
    std::streambuf* usual_ = nullptr;  ///< null where it is no console
    DWORD mode_ = 0;
};

class Input {
public:
    Input() : console_(GetStdHandle(STD_INPUT_HANDLE)), buffer_(console_) {
        if (isConsole(console_)) {
            usual_ = std::cin.rdbuf(&buffer_);
        } else {
            makeBinary(stdin);
        }
    }

    ~Input() {
        if (usual_ != nullptr) std::cin.rdbuf(usual_);
    }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

private:
    HANDLE console_;
    ConsoleInput buffer_;
    std::streambuf* usual_ = nullptr;
};

/// The exchange and the documents are objects of the system. Where it has none, making one tells that.
class Apartment {
public:
    Apartment() : entered_(SUCCEEDED(CoInitialize(nullptr))) {}
    ~Apartment() {
        if (entered_) CoUninitialize();
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

private:
    bool entered_;
};

/// What main() gets has lost the characters that the code page does not know.
std::vector<std::string> wideArguments() {
    int count = 0;
    wchar_t** const all = CommandLineToArgvW(GetCommandLineW(), &count);
    if (all == nullptr) throw std::bad_alloc();
    std::vector<std::string> arguments;
    try {
        for (int i = 1; i < count; ++i) arguments.push_back(fromWide(all[i]));
    } catch (...) {
        LocalFree(all);
        throw;
    }
    LocalFree(all);
    return arguments;
}

}  // namespace

struct Process::System {
    Apartment apartment{};
    Input input{};
    Output output{std::cout, stdout, STD_OUTPUT_HANDLE};
    Output errors{std::cerr, stderr, STD_ERROR_HANDLE};
};

Process::Process(int, char**) : arguments_(wideArguments()) {
    std::ios::sync_with_stdio(false);
    system_ = std::make_unique<System>();
}

Process::~Process() = default;

std::optional<std::string> environmentVariable(const std::string& name) {
    const std::wstring wideName = toWide(name);
    std::wstring value;
    while (true) {
        SetLastError(ERROR_SUCCESS);
        const DWORD size =
            GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size() + 1));
        if (size == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
        const bool whole = size <= value.size();
        value.resize(size);
        if (whole) return fromWide(value);
    }
}

}  // namespace quill1xml::cli
