// Files and folders that are not to stay.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace quill1xml::cli {

/// A file to write and read, gone once it is closed; null when it cannot be made.
std::FILE* makeTemporaryFile();

struct CloseFile {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using TemporaryFile = std::unique_ptr<std::FILE, CloseFile>;

/// Goes to a place in a file of any size, in bytes; false when that fails.
bool seekTo(std::FILE* file, std::uint64_t place);

/// Makes a new folder of the user's own for temporary files. Throws std::runtime_error when that fails.
std::filesystem::path makeTemporaryFolder();

}  // namespace quill1xml::cli
