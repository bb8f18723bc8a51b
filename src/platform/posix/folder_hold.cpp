#include "platform/posix/folder_hold.hpp"

#include "platform/posix/native_path.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quill1xml::platform {
namespace {

constexpr mode_t anyoneByUmask = 0666;

struct Descriptor {
    explicit Descriptor(int opened) noexcept : number(opened) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number != -1) close(number);
    }

    int release() noexcept { return std::exchange(number, -1); }

    int number;
};

/// Somebody else's file can be locked, but not written.
int openLock(const char* path) {
    constexpr int always = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    const int descriptor = open(path, O_RDWR | O_CREAT | always, anyoneByUmask);
    return descriptor != -1 || errno != EACCES ? descriptor : open(path, O_RDONLY | always);
}

/// Whether the file is still the one of that name: its last holder may have removed it.
bool isNamed(int descriptor, const char* path) {
    struct stat held;
    struct stat named;
    return fstat(descriptor, &held) == 0 && lstat(path, &named) == 0 && held.st_dev == named.st_dev &&
           held.st_ino == named.st_ino;
}

/// The process whose number stands in the lock.
std::string holder(int descriptor) {
    std::array<char, 20> digits{};
    const ssize_t count = pread(descriptor, digits.data(), digits.size(), 0);
    const std::string_view text(digits.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    const std::string_view number = text.substr(0, text.find_first_not_of("0123456789"));
    return number.empty() ? "another process" : "process " + std::string(number);
}

Error inUse(Text folder, int descriptor) {
    return runtimeError(RuntimeError::permissionDenied,
                        toUtf16("another job is at work in " + toUtf8(folder) + ", " + holder(descriptor) +
                                "; wait for its end, or give this job a folder of its own with SetTempFilePath"));
}

Error cannotHold(int code, Text folder) {
    if (code == ENOENT || code == ENOTDIR) return runtimeError(RuntimeError::pathNotFound, folder);
    return runtimeError(RuntimeError::pathFileAccess,
                        std::u16string(folder) + u": " + toUtf16(std::generic_category().message(code)));
}

struct Free {
    void operator()(char* text) const noexcept { std::free(text); }
};

/// A folder's name without links and detours.
std::string wholeName(Text folder) {
    const std::unique_ptr<char, Free> whole(realpath(NativePath(folder).c_str(), nullptr));
    if (whole == nullptr) throw cannotHold(errno, folder);
    return whole.get();
}

class PosixFolderHold final : public FolderHold {
public:
    explicit PosixFolderHold(Text folder) : folder_(wholeName(folder)), lock_(folder_ + "/.quill1xml.lock") {
        while (!tryToHold(folder)) {
        }
        // Only for the message that another job gets.
        const std::string number = std::to_string(getpid()) + '\n';
        if (ftruncate(descriptor_, 0) == 0) (void)!pwrite(descriptor_, number.data(), number.size(), 0);
    }

    PosixFolderHold(const PosixFolderHold&) = delete;
    PosixFolderHold& operator=(const PosixFolderHold&) = delete;

    ~PosixFolderHold() override {
        // Removed while it is held: whoever has opened it meanwhile finds that it has no name any more, and starts
        // again.
        unlink(lock_.c_str());
        close(descriptor_);
    }

    std::u16string folder() const override { return toUtf16(folder_); }

private:
    /// One attempt; false when the file was removed meanwhile.
    bool tryToHold(Text folder) {
        Descriptor opened(openLock(lock_.c_str()));
        if (opened.number != -1 && flock(opened.number, LOCK_EX | LOCK_NB) == 0) {
            if (!isNamed(opened.number, lock_.c_str())) return false;
            descriptor_ = opened.release();
            return true;
        }
        const int code = errno;
        if (code == EWOULDBLOCK) throw inUse(folder, opened.number);
        if (code != EINTR) throw cannotHold(code, folder);
        return false;
    }

    const std::string folder_;
    const std::string lock_;
    int descriptor_ = -1;
};

}  // namespace

std::unique_ptr<FolderHold> holdFolder(Text folder) { return std::make_unique<PosixFolderHold>(folder); }

}  // namespace quill1xml::platform
