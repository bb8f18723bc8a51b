#include "command_line/folder_access.hpp"

#include <algorithm>
#include <cerrno>

#include <unistd.h>

namespace quill1xml::cli {

std::error_code whyNotWritable(const std::string& folder) {
    std::string path = folder;
    std::ranges::replace(path, '\\', '/');
    // Something else of that name has no "." in it.
    if (access((path + "/.").c_str(), W_OK | X_OK) == 0) return {};
    return {errno, std::generic_category()};
}

}  // namespace quill1xml::cli
