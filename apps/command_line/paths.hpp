// The files and folders that the command line names.
#pragma once

#include <filesystem>
#include <string>

namespace quill1xml::cli {

/// The path of a name in UTF-8. A path made of plain characters would be read in the system's code page.
inline std::filesystem::path pathOf(const std::string& name) { return std::u8string(name.begin(), name.end()); }

}  // namespace quill1xml::cli
