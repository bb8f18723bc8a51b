#include "platform/windows/files.hpp"

#include "platform/text_file.hpp"
#include "platform/windows/com_support.hpp"
#include "platform/windows/errors.hpp"
#include "platform/windows/name_pattern.hpp"
#include "platform/windows/parts.hpp"
#include "platform/windows/url.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <cwchar>
#include <memory>
#include <utility>

namespace quill1xml::platform {
namespace {

/// Whether a failure passes by itself: another program holds the file, or the system is about to delete it.
bool mayPass(DWORD code, const std::u16string& name, bool first) {
    if (code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION) return true;
    if (code != ERROR_ACCESS_DENIED) return false;
    const DWORD attributes = GetFileAttributesW(com::wide(name.c_str()));
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        return (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) == 0;
    }
    // What is not there may have gone just now; later on the folder is what refuses.
    return first || GetLastError() != ERROR_FILE_NOT_FOUND;
}

/// Makes a file call that tells success, for about a second: scanners and indexers hold files for moments.
template <class Call>
bool insist(const std::u16string& name, Call call) {
    constexpr DWORD pause = 50;  // milliseconds, as patience
    constexpr DWORD patience = 1000;
    for (DWORD waited = 0; !call(); waited += pause) {
        const DWORD code = GetLastError();
        if (waited == patience || !mayPass(code, name, waited == 0)) {
            SetLastError(code);
            return false;
        }
        Sleep(pause);
    }
    return true;
}

class File {
public:
    /// Opens the file; others may read it meanwhile. Throws the Error of a file call.
    File(Text name, DWORD access, DWORD share, DWORD disposition) : name_(name) {
        const bool opened = insist(name_, [&] {
            handle_ = CreateFileW(com::wide(name_.c_str()), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                                  nullptr);
            return handle_ != INVALID_HANDLE_VALUE;
        });
        if (!opened) throwLastError(name_);
        existed_ = GetLastError() == ERROR_ALREADY_EXISTS;
    }

    File(const File&) = delete;
    File& operator=(const File&) = delete;

    ~File() {
        if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
    }

    /// Moves to the end and returns its offset in bytes.
    LONGLONG seekEnd() {
        LARGE_INTEGER end;
        if (SetFilePointerEx(handle_, {}, &end, FILE_END) == 0) throwLastError(name_);
        return end.QuadPart;
    }

    void write(std::string_view bytes) {
        while (!bytes.empty()) {
            const auto size = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 30));
            DWORD written = 0;
            if (WriteFile(handle_, bytes.data(), size, &written, nullptr) == 0) throwLastError(name_);
            if (written == 0) throw runtimeError(RuntimeError::diskFull, name_);
            bytes.remove_prefix(written);
        }
    }

    std::size_t read(void* buffer, std::size_t size) {
        DWORD count = 0;
        const auto wanted = static_cast<DWORD>(std::min<std::size_t>(size, 1u << 30));
        if (ReadFile(handle_, buffer, wanted, &count, nullptr) == 0) throwLastError(name_);
        return count;
    }

    /// Takes back what was written after that offset, as far as the system lets us; a file made for it goes again.
    void takeBack(LONGLONG size) noexcept {
        LARGE_INTEGER end;
        end.QuadPart = size;
        if (SetFilePointerEx(handle_, end, nullptr, FILE_BEGIN) != 0) SetEndOfFile(handle_);
        if (existed_) return;
        CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
        DeleteFileW(com::wide(name_.c_str()));
    }

private:
    std::u16string name_;
    HANDLE handle_ = INVALID_HANDLE_VALUE;
    bool existed_ = false;
};

std::string_view bytesOf(Text text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

bool lessAsNames(const std::u16string& a, const std::u16string& b) {
    return CompareStringOrdinal(com::wide(a.data()), static_cast<int>(a.size()), com::wide(b.data()),
                                static_cast<int>(b.size()), TRUE) == CSTR_LESS_THAN;
}

bool isNormal(const WIN32_FIND_DATAW& entry) {
    return (entry.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) == 0;
}

template <std::size_t size>
std::u16string nameOf(const wchar_t (&name)[size]) {
    return std::u16string(com::asText(name, std::wcslen(name)));
}

/// What to ask the system for: not every system takes "?" for no character at all, before a point or at the end.
std::u16string searchFor(Text pattern) {
    std::u16string search(pattern);
    const std::size_t name = search.rfind(u'\\') + 1;
    for (std::size_t i = name; (i = search.find(u'?', i)) != std::u16string::npos;) {
        if (i > name && search[i - 1] == u'*') {
            search.erase(i, 1);
        } else {
            search[i] = u'*';
        }
    }
    return search;
}

/// Whether the pattern asks for what the search found. It also finds the short names that the system makes up.
bool isMeant(const WIN32_FIND_DATAW& entry, Text pattern) {
    if (matchesPattern(nameOf(entry.cFileName), pattern)) return true;
    if (pattern.find(u'?') != Text::npos) return false;
    return entry.cAlternateFileName[0] == L'\0' || !matchesPattern(nameOf(entry.cAlternateFileName), pattern);
}

struct CloseSearch {
    void operator()(HANDLE search) const noexcept { FindClose(search); }
};

/// Holds a folder by a file of its own in it, which the system deletes with the last handle.
class WindowsFolderHold final : public FolderHold {
public:
    explicit WindowsFolderHold(Text folder) : lock_(std::u16string(folder) + u"\\.quill1xml.lock") {
        constexpr DWORD attributes = FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE;
        const bool held = insist(lock_, [this] {
            handle_ = CreateFileW(com::wide(lock_.c_str()), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ,
                                  nullptr, CREATE_ALWAYS, attributes, nullptr);
            return handle_ != INVALID_HANDLE_VALUE;
        });
        if (!held) refuse(folder, GetLastError());
        // Only for the message that another job gets.
        const std::string number = std::to_string(GetCurrentProcessId());
        DWORD written = 0;
        WriteFile(handle_, number.data(), static_cast<DWORD>(number.size()), &written, nullptr);
        try {
            folder_ = wholeName();
        } catch (...) {
            CloseHandle(handle_);
            throw;
        }
    }

    WindowsFolderHold(const WindowsFolderHold&) = delete;
    WindowsFolderHold& operator=(const WindowsFolderHold&) = delete;

    ~WindowsFolderHold() override { CloseHandle(handle_); }

    std::u16string folder() const override { return folder_; }

private:
    [[noreturn]] void refuse(Text folder, DWORD code) const {
        if (code == ERROR_SHARING_VIOLATION) {
            throw runtimeError(RuntimeError::permissionDenied,
                               u"another job is at work in " + std::u16string(folder) + u", " + holder() +
                                   u"; wait for its end, or give this job a folder of its own with SetTempFilePath");
        }
        if (code == ERROR_PATH_NOT_FOUND || code == ERROR_FILE_NOT_FOUND || code == ERROR_DIRECTORY) {
            throw runtimeError(RuntimeError::pathNotFound, folder);
        }
        throw runtimeError(RuntimeError::pathFileAccess,
                           std::u16string(folder) + u": " + systemText(HRESULT_FROM_WIN32(code)));
    }

    /// The process whose number stands in the file.
    std::u16string holder() const {
        try {
            std::u16string number(u"process ");
            for (const std::uint8_t digit : platform::readBytes(lock_)) number.push_back(digit);
            if (number.ends_with(u' ')) return u"another process";
            return number;
        } catch (const Error&) {
            return u"another process";
        }
    }

    /// As the system itself writes it, without regard to how the host does.
    std::u16string wholeName() const {
        const DWORD size = GetFinalPathNameByHandleW(handle_, nullptr, 0, FILE_NAME_NORMALIZED);
        std::wstring name(size, L'\0');
        const DWORD length = GetFinalPathNameByHandleW(handle_, name.data(), size, FILE_NAME_NORMALIZED);
        if (length == 0 || length >= size) throwLastError(lock_);
        const Text whole = com::asText(name.data(), length);
        return std::u16string(whole.substr(0, whole.rfind(u'\\')));
    }

    std::u16string lock_;
    HANDLE handle_ = INVALID_HANDLE_VALUE;
    std::u16string folder_;
};

class WindowsFiles final : public Files {
public:
    void appendText(Text fileName, Text text) override { write(fileName, text, OPEN_ALWAYS); }

    void writeText(Text fileName, Text text) override { write(fileName, text, CREATE_ALWAYS); }

    void flush(Text fileName) override {
        constexpr DWORD others = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        const std::u16string name(fileName);
        const HANDLE file = CreateFileW(com::wide(name.c_str()), GENERIC_WRITE, others, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            // The system flushes only what may be written to.
            const DWORD code = GetLastError();
            if (code == ERROR_ACCESS_DENIED || code == ERROR_WRITE_PROTECT || code == ERROR_SHARING_VIOLATION) return;
            throwLastError(fileName);
        }
        const bool flushed = FlushFileBuffers(file) != 0;
        const DWORD code = GetLastError();
        CloseHandle(file);
        if (flushed || code == ERROR_INVALID_FUNCTION || code == ERROR_NOT_SUPPORTED) return;
        SetLastError(code);
        throwLastError(fileName);
    }

    std::u16string readText(Text fileName) override { return textOf(platform::readBytes(fileName), fileName); }

    Bytes readBytes(Text fileName) override { return platform::readBytes(fileName); }

    std::vector<std::u16string> list(Text pattern) override {
        std::vector<std::u16string> names;
        WIN32_FIND_DATAW entry;
        const HANDLE search = FindFirstFileW(com::wide(searchFor(pattern).c_str()), &entry);
        if (search == INVALID_HANDLE_VALUE) {
            switch (GetLastError()) {
                case ERROR_FILE_NOT_FOUND:
                case ERROR_NO_MORE_FILES:
                case ERROR_PATH_NOT_FOUND:
                case ERROR_DIRECTORY:
                case ERROR_INVALID_NAME: return names;
            }
            throwLastError(pattern);
        }
        const std::unique_ptr<void, CloseSearch> closing(search);
        const Text namePattern = pattern.substr(pattern.rfind(u'\\') + 1);
        do {
            if (isNormal(entry) && isMeant(entry, namePattern)) names.push_back(nameOf(entry.cFileName));
        } while (FindNextFileW(search, &entry) != 0);
        if (GetLastError() != ERROR_NO_MORE_FILES) throwLastError(pattern);
        std::sort(names.begin(), names.end(), lessAsNames);
        return names;
    }

    void remove(Text fileName) override {
        const std::u16string name(fileName);
        const DWORD attributes = GetFileAttributesW(com::wide(name.c_str()));
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
            SetFileAttributesW(com::wide(name.c_str()), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
        }
        if (!insist(name, [&name] { return DeleteFileW(com::wide(name.c_str())) != 0; })) throwLastError(fileName);
    }

    std::unique_ptr<FolderHold> hold(Text folder) override { return std::make_unique<WindowsFolderHold>(folder); }

    std::u16string fileOfUrl(Text url) const override {
        std::u16string name = toUtf16(percentDecoded(url.substr(url.find(u"://") + 3)));
        if (name.starts_with(u"localhost/")) name.erase(0, name.find(u'/'));
        return name.starts_with(u'/') ? name.substr(1) : u"\\\\" + name;
    }

private:
    static void write(Text fileName, Text text, DWORD disposition) {
        File file(fileName, GENERIC_WRITE, FILE_SHARE_READ, disposition);
        const LONGLONG size = file.seekEnd();
        try {
            if (size == 0) file.write({reinterpret_cast<const char*>(byteOrderMark.data()), byteOrderMark.size()});
            file.write(bytesOf(text));
        } catch (const Error&) {
            file.takeBack(size);
            throw;
        }
    }
};

}  // namespace

void writeBytes(Text fileName, std::string_view bytes) {
    File file(fileName, GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS);
    try {
        file.write(bytes);
    } catch (const Error&) {
        file.takeBack(0);
        throw;
    }
}

Bytes readBytes(Text fileName) {
    constexpr std::size_t firstChunk = 1 << 16;
    File file(fileName, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING);
    Bytes bytes;
    std::size_t used = 0;
    std::size_t count = 0;
    do {
        bytes.resize(used + std::max(firstChunk, used));
        count = file.read(bytes.data() + used, bytes.size() - used);
        used += count;
    } while (count != 0);
    bytes.resize(used);
    return bytes;
}

std::shared_ptr<Files> makeFiles() { return std::make_shared<WindowsFiles>(); }

}  // namespace quill1xml::platform
