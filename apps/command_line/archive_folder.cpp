#include "command_line/archive_folder.hpp"

#include "command_line/packet_folders.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <unistd.h>

namespace quill1xml::cli {

std::u16string archiveFolder(const automation::Member& method, const nlohmann::json& values) {
    if (method.name == "Send" && !sendsPackets(method, values)) return {};
    const nlohmann::json given = values.value("strArchivePath", nlohmann::json());
    return given.is_string() ? toUtf16(given.get<std::string>()) : std::u16string();
}

void requireArchive(Text folder) {
    if (folder.empty()) return;
    std::string path = toUtf8(folder);
    std::ranges::replace(path, '\\', '/');
    // Something else of that name has no "." in it.
    if (access((path + "/.").c_str(), W_OK | X_OK) == 0) return;
    const int code = errno;
    const std::u16string detail = std::u16string(folder) + u" (" + toUtf16(std::generic_category().message(code)) +
                                  u"), the folder of the archive; nothing was exchanged with the server";
    const bool missing = code == ENOENT || code == ENOTDIR;
    const bool refused = code == EACCES || code == EPERM || code == EROFS;
    throw runtimeError(missing   ? RuntimeError::pathNotFound
                       : refused ? RuntimeError::permissionDenied
                                 : RuntimeError::deviceIo,
                       detail);
}

}  // namespace quill1xml::cli
