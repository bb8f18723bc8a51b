// The console as a stream of UTF-8. It is written and read in UTF-16, whatever its code page is.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <streambuf>
#include <string>

namespace quill1xml::cli {

/// Whether a standard handle is a console; that of a file or a pipe is not.
bool isConsole(HANDLE handle);

class ConsoleOutput final : public std::streambuf {
public:
    explicit ConsoleOutput(HANDLE console) : console_(console) {}

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;

private:
    /// Writes the first bytes of what is held.
    bool write(std::size_t size);

    HANDLE console_;
    std::string held_;
};

/// A line that begins with Ctrl+Z ends the input.
class ConsoleInput final : public std::streambuf {
public:
    explicit ConsoleInput(HANDLE console) : console_(console) {}

protected:
    /// Throws std::ios_base::failure when the console cannot be read.
    int_type underflow() override;

private:
    HANDLE console_;
    std::wstring half_;  ///< the first half of a pair whose second one is still to come
    std::string line_;
};

}  // namespace quill1xml::cli
