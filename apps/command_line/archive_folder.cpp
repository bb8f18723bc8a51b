#include "command_line/archive_folder.hpp"

#include "command_line/folder_access.hpp"
#include "command_line/packet_folders.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <system_error>

namespace quill1xml::cli {

std::u16string archiveFolder(const automation::Member& method, const nlohmann::json& values) {
    if (method.name == "Send" && !sendsPackets(method, values)) return {};
    const nlohmann::json given = values.value("strArchivePath", nlohmann::json());
    return given.is_string() ? toUtf16(given.get<std::string>()) : std::u16string();
}

void requireArchive(Text folder) {
    if (folder.empty()) return;
    const std::error_code code = whyNotWritable(toUtf8(folder));
    if (!code) return;
    const std::u16string detail = std::u16string(folder) + u" (" + toUtf16(code.message()) +
                                  u"), the folder of the archive; nothing was exchanged with the server";
    const bool missing = code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory;
    const bool refused = code == std::errc::permission_denied || code == std::errc::operation_not_permitted ||
                         code == std::errc::read_only_file_system;
    throw runtimeError(missing   ? RuntimeError::pathNotFound
                       : refused ? RuntimeError::permissionDenied
                                 : RuntimeError::deviceIo,
                       detail);
}

}  // namespace quill1xml::cli
