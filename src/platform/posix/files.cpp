#include "platform/posix/files.hpp"

#include "platform/posix/errors.hpp"
#include "platform/posix/folder_hold.hpp"
#include "platform/posix/native_path.hpp"
#include "platform/posix/parts.hpp"
#include "platform/text_file.hpp"
#include "quill1xml/text.hpp"
#include "text/letter_case.hpp"
#include "text/wildcard.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <chrono>
#include <optional>
#include <span>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace quill1xml::platform {
namespace {

constexpr mode_t anyoneByUmask = 0666;

/// Calls until a signal does not get in the way.
template <typename Call>
auto retried(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

/// An open file by its host name. Every failure is thrown as a fileError; what is no file but would block, or never
/// end, is refused.
class File {
public:
    File(const NativePath& path, Text name, int flags) : name_(name) {
        const auto tryOpen = [&](int more) {
            return retried([&] { return open(path.c_str(), flags | more | O_CLOEXEC | O_NONBLOCK, anyoneByUmask); });
        };
        // Asking for an existing file first tells whether a failed write has to take a new one away again.
        descriptor_ = tryOpen(0);
        if (descriptor_ == -1 && errno == ENOENT && (flags & O_WRONLY) != 0) {
            descriptor_ = tryOpen(O_CREAT);
            created_ = true;
        }
        if (descriptor_ == -1 && errno == ENXIO) refuse();  // a pipe that nobody reads
        if (descriptor_ == -1) fail();
        try {
            size_ = (flags & O_WRONLY) != 0 ? sizeToWrite() : sizeToRead();
        } catch (const Error&) {
            ::close(descriptor_);
            throw;
        }
    }

    File(const File&) = delete;
    File& operator=(const File&) = delete;

    ~File() {
        if (descriptor_ != -1) ::close(descriptor_);
    }

    /// Waits until what was written would survive a power cut.
    void flush() {
        const int result = retried([&] { return fsync(descriptor_); });
        // A device has nothing to flush, and some file systems cannot.
        if (result != 0 && errno != EINVAL && errno != EROFS && errno != ENOTSUP) fail();
    }

    bool startFlush() noexcept {
        constexpr off_t wholeFile = 0;
        return sync_file_range(descriptor_, 0, wholeFile, SYNC_FILE_RANGE_WRITE) == 0;
    }

    std::optional<FileVersion> version() const {
        struct stat status;
        if (fstat(descriptor_, &status) != 0) fail();
        // The system's time stamps are seconds apart on some file systems.
        constexpr auto settled = std::chrono::seconds(3);
        const auto age = std::chrono::system_clock::now().time_since_epoch() - sinceEpoch(status.st_ctim);
        if (age < settled) return std::nullopt;
        return FileVersion{status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
                           sinceEpoch(status.st_mtim).count(), sinceEpoch(status.st_ctim).count()};
    }

    /// Closes the file; some systems report a failed write only here.
    void close() {
        // Linux closes the descriptor even when a signal gets in the way.
        if (::close(std::exchange(descriptor_, -1)) != 0 && errno != EINTR) fail();
    }

    /// In bytes, as it was opened.
    off_t size() const noexcept { return size_; }

    void write(std::span<iovec> parts) {
        while (!parts.empty()) {
            const ssize_t count = retried([&] { return writeSome(parts); });
            if (count == -1) fail();
            auto written = static_cast<std::size_t>(count);
            while (!parts.empty() && written >= parts.front().iov_len) {
                written -= parts.front().iov_len;
                parts = parts.subspan(1);
            }
            if (parts.empty()) return;
            parts.front().iov_base = static_cast<char*>(parts.front().iov_base) + written;
            parts.front().iov_len -= written;
        }
    }

    std::size_t read(void* buffer, std::size_t size) {
        const ssize_t count = retried([&] { return ::read(descriptor_, buffer, size); });
        if (count == -1) fail();
        return static_cast<std::size_t>(count);
    }

    bool created() const noexcept { return created_; }

private:
    static std::chrono::nanoseconds sinceEpoch(const timespec& time) {
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    }

    off_t sizeToRead() const {
        struct stat status;
        if (fstat(descriptor_, &status) != 0) fail();
        if (!S_ISREG(status.st_mode)) refuse();
        return status.st_size;
    }

    /// Asked for at every record: lseek costs a third of fstat and knows no end of a pipe either.
    off_t sizeToWrite() const {
        const off_t size = lseek(descriptor_, 0, SEEK_END);
        if (size != -1) return size;
        if (errno != ESPIPE) fail();
        struct stat status;
        if (fstat(descriptor_, &status) != 0) fail();
        if (!S_ISCHR(status.st_mode)) refuse();  // devices may be written to, as ever
        return 0;
    }

    /// A single part goes the shorter way.
    ssize_t writeSome(std::span<const iovec> parts) const {
        if (parts.size() == 1) return ::write(descriptor_, parts.front().iov_base, parts.front().iov_len);
        return writev(descriptor_, parts.data(), static_cast<int>(parts.size()));
    }

    [[noreturn]] void fail() const { throw fileError(errno, name_); }

    [[noreturn]] void refuse() const {
        throw runtimeError(RuntimeError::pathFileAccess, std::u16string(name_) + u" is not a regular file");
    }

    Text name_;
    int descriptor_ = -1;
    off_t size_ = 0;
    bool created_ = false;
};

iovec part(const void* data, std::size_t size) { return {const_cast<void*>(data), size}; }

enum class Durable : bool { no, yes };

/// Writes to an open file and closes it. What a failure leaves behind is taken back, as far as the system lets us.
void writeParts(File& file, const NativePath& path, off_t formerSize, std::span<iovec> parts, Durable durable) {
    try {
        file.write(parts);
        if (durable == Durable::yes) file.flush();
        file.close();
    } catch (const Error&) {
        const bool restored = truncate(path.c_str(), formerSize) == 0;
        if (restored && file.created()) unlink(path.c_str());
        throw;
    }
}

[[maybe_unused]] void swapBytes(std::u16string& text) {
    for (char16_t& c : text) c = static_cast<char16_t>(c << 8 | c >> 8);
}

void writeText(Text fileName, Text text, int flags) {
    const NativePath path(fileName);
    File file(path, fileName, O_WRONLY | flags);
    const off_t size = file.size();
    std::u16string swapped;
    if constexpr (std::endian::native == std::endian::big) {
        swapped = text;
        swapBytes(swapped);
        text = swapped;
    }
    std::array<iovec, 2> parts{part(byteOrderMark.data(), byteOrderMark.size()),
                               part(text.data(), text.size() * sizeof(char16_t))};
    writeParts(file, path, size, std::span(parts).subspan(size == 0 ? 0 : 1), Durable::no);
}

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { closedir(folder); }
};

/// The next entry of a folder, null at its end.
const dirent* nextEntry(DIR* folder, Text folderName) {
    errno = 0;  // the end of a folder and a failure look the same otherwise
    const dirent* entry = readdir(folder);
    if (entry == nullptr && errno != 0) throw fileError(errno, folderName);
    return entry;
}

bool isNormalFile(DIR* folder, const dirent& entry, Text name) {
    if (entry.d_type == DT_REG) return true;
    if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) return false;
    struct stat status;
    if (fstatat(dirfd(folder), entry.d_name, &status, 0) == 0) return S_ISREG(status.st_mode);
    const bool gone = errno == ENOENT || errno == ENOTDIR || errno == ELOOP;  // links that lead nowhere too
    if (!gone) throw fileError(errno, name);
    return false;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::string percentDecoded(const std::string& encoded) {
    std::string name;
    for (std::size_t i = 0; i < encoded.size(); ++i) {
        const bool escape = encoded[i] == '%' && i + 2 < encoded.size() && hexDigit(encoded[i + 1]) >= 0 &&
                            hexDigit(encoded[i + 2]) >= 0;
        name.push_back(escape ? static_cast<char>(hexDigit(encoded[i + 1]) << 4 | hexDigit(encoded[i + 2]))
                              : encoded[i]);
        if (escape) i += 2;
    }
    return name;
}

/// The name of a normal file, where it is one: asking for it spares going through its folder.
std::vector<std::u16string> listOne(Text fileName, Text name) {
    if (fileName.find(u'\0') != Text::npos || name.empty()) return {};
    struct stat status;
    if (stat(NativePath(fileName).c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) return {};
        return {std::u16string(name)};
    }
    // A link that leads nowhere or round in circles is no file.
    if (errno == ENOENT || errno == ENOTDIR || errno == ELOOP) return {};
    throw fileError(errno, fileName);
}

class PosixFiles final : public Files {
public:
    void appendText(Text fileName, Text text) override { platform::writeText(fileName, text, O_APPEND); }

    void writeText(Text fileName, Text text) override { platform::writeText(fileName, text, O_TRUNC); }

    void flush(Text fileName) override { File(NativePath(fileName), fileName, O_RDONLY).flush(); }

    bool startFlush(Text fileName) noexcept override {
        try {
            return File(NativePath(fileName), fileName, O_RDONLY).startFlush();
        } catch (const std::exception&) {
            return false;
        }
    }

    std::optional<FileVersion> version(Text fileName) noexcept override {
        try {
            return File(NativePath(fileName), fileName, O_RDONLY).version();
        } catch (const std::exception&) {
            return std::nullopt;
        }
    }

    std::u16string readText(Text fileName) override { return textOf(platform::readBytes(fileName), fileName); }

    Bytes readBytes(Text fileName) override { return platform::readBytes(fileName); }

    std::vector<std::u16string> list(Text pattern) override {
        const Text folderName = folderOf(pattern);
        const Text namePattern = pattern.substr(pattern.find_last_of(u"\\/") + 1);
        if (namePattern.find_first_of(u"*?") == Text::npos) return listOne(pattern, namePattern);
        const NativePath path(folderName.empty() ? u"." : folderName);
        const std::unique_ptr<DIR, CloseFolder> folder(opendir(path.c_str()));
        if (!folder && errno != ENOENT && errno != ENOTDIR) throw fileError(errno, folderName);
        std::vector<std::u16string> names;
        while (const dirent* entry = folder ? nextEntry(folder.get(), folderName) : nullptr) {
            std::u16string name = toUtf16(entry->d_name);
            if (matchesWildcard(name, namePattern, false) && isNormalFile(folder.get(), *entry, name)) {
                names.push_back(std::move(name));
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    void remove(Text fileName) override {
        if (unlink(NativePath(fileName).c_str()) != 0) throw fileError(errno, fileName);
    }

    std::unique_ptr<FolderHold> hold(Text folder) override { return holdFolder(folder); }

    /// The host, which may only be this one, is left out.
    std::u16string fileOfUrl(Text url) const override {
        constexpr Text thisHost = u"localhost/";
        url.remove_prefix(url.find(u"://") + 3);
        if (equalIgnoringCase(url.substr(0, thisHost.size()), thisHost)) url.remove_prefix(thisHost.size() - 1);
        return toUtf16(percentDecoded(toUtf8(url)));
    }
};

}  // namespace

void writeBytes(Text fileName, std::string_view bytes) {
    const NativePath path(fileName);
    File file(path, fileName, O_WRONLY | O_TRUNC);
    std::array<iovec, 1> parts{part(bytes.data(), bytes.size())};
    writeParts(file, path, 0, parts, Durable::yes);
}

Bytes readBytes(Text fileName) {
    File file(NativePath(fileName), fileName, O_RDONLY);
    // With room for one byte more, the end of a file that stays as it is shows without growing.
    constexpr std::size_t leastRoom = 1 << 12;
    Bytes bytes(static_cast<std::size_t>(file.size()) + 1);
    std::size_t used = 0;
    while (const std::size_t count = file.read(bytes.data() + used, bytes.size() - used)) {
        used += count;
        if (used == bytes.size()) bytes.resize(used + std::max(leastRoom, used));
    }
    bytes.resize(used);
    return bytes;
}

std::shared_ptr<Files> makeFiles() { return std::make_shared<PosixFiles>(); }

}  // namespace quill1xml::platform
