#include "command_line/windows/console.hpp"

#include "command_line/windows/wide.hpp"

#include <algorithm>
#include <ios>

namespace quill1xml::cli {
namespace {

/// Older systems hand all of a larger text to the console at once, and fail.
constexpr std::size_t mostAtOnce = 8192;

constexpr std::size_t heldAtMost = 4096;

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// Without the character at the end whose other bytes are still to come.
std::size_t wholeCharacters(const std::string& text) {
    std::size_t start = text.size();
    constexpr std::size_t longest = 4;
    while (start > 0 && text.size() - start < longest) {
        --start;
        if (isContinuation(text[start])) continue;
        const auto first = static_cast<unsigned char>(text[start]);
        const std::size_t size = first < 0xC0U ? 1 : first < 0xE0U ? 2 : first < 0xF0U ? 3 : 4;
        return size > text.size() - start ? start : text.size();
    }
    return text.size();
}

bool isFirstHalf(wchar_t unit) { return (unit & 0xFC00) == 0xD800; }

}  // namespace

bool isConsole(HANDLE handle) {
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0;
}

ConsoleOutput::int_type ConsoleOutput::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
    const char byte = traits_type::to_char_type(character);
    return xsputn(&byte, 1) == 1 ? character : traits_type::eof();
}

std::streamsize ConsoleOutput::xsputn(const char* text, std::streamsize size) {
    held_.append(text, static_cast<std::size_t>(size));
    return held_.size() < heldAtMost || write(wholeCharacters(held_)) ? size : 0;
}

int ConsoleOutput::sync() { return write(wholeCharacters(held_)) ? 0 : -1; }

bool ConsoleOutput::write(std::size_t size) {
    const std::wstring text = toWide(std::string_view(held_).substr(0, size));
    held_.erase(0, size);
    for (std::size_t done = 0; done < text.size();) {
        std::size_t count = std::min(text.size() - done, mostAtOnce);
        if (count > 1 && done + count < text.size() && isFirstHalf(text[done + count - 1])) --count;
        DWORD written = 0;
        if (WriteConsoleW(console_, text.data() + done, static_cast<DWORD>(count), &written, nullptr) == 0)
            return false;
        if (written == 0) return false;
        done += written;
    }
    return true;
}

ConsoleInput::int_type ConsoleInput::underflow() {
    constexpr wchar_t endOfInput = 0x1A;
    std::array<wchar_t, heldAtMost> typed{};
    line_.clear();
    while (line_.empty()) {
        DWORD count = 0;
        if (ReadConsoleW(console_, typed.data(), static_cast<DWORD>(typed.size()), &count, nullptr) == 0) {
            throw std::ios_base::failure("the console cannot be read");
        }
        if (count == 0 || (half_.empty() && typed.front() == endOfInput)) return traits_type::eof();
        std::wstring text = half_.append(typed.data(), count);
        half_.clear();
        if (isFirstHalf(text.back())) {
            half_ = text.back();
            text.pop_back();
        }
        line_ = fromWide(text);
    }
    setg(line_.data(), line_.data(), line_.data() + line_.size());
    return traits_type::to_int_type(line_.front());
}

}  // namespace quill1xml::cli
