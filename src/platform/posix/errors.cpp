#include "platform/posix/errors.hpp"

#include "platform/posix/native_path.hpp"
#include "quill1xml/text.hpp"

#include <cerrno>
#include <string>
#include <system_error>

#include <sys/stat.h>

namespace quill1xml::platform {
namespace {

bool isFolder(Text name) {
    struct stat status;
    return stat(NativePath(name).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

Error missing(Text fileName) {
    const Text folder = folderOf(fileName);
    if (folder.empty() || isFolder(folder)) return runtimeError(RuntimeError::fileNotFound, fileName);
    return runtimeError(RuntimeError::pathNotFound,
                        std::u16string(folder) + u", the folder of " + std::u16string(fileName));
}

}  // namespace

Error fileError(int code, Text fileName) {
    switch (code) {
        case ENOENT: return missing(fileName);
        case ENOTDIR: return runtimeError(RuntimeError::pathNotFound, fileName);
        case EISDIR: return runtimeError(RuntimeError::pathFileAccess, fileName);
        case EACCES:
        case EPERM:
        case EROFS: return runtimeError(RuntimeError::permissionDenied, fileName);
        case ENOSPC:
        case EDQUOT:
        case EFBIG: return runtimeError(RuntimeError::diskFull, fileName);
        case EMFILE:
        case ENFILE: return runtimeError(RuntimeError::tooManyFiles, fileName);
        default: break;
    }
    const std::u16string reason = toUtf16(std::generic_category().message(code));
    return runtimeError(RuntimeError::deviceIo, std::u16string(fileName) + u" (" + reason + u")");
}

}  // namespace quill1xml::platform
