#include "command_line/temporary.hpp"

#include <windows.h>

#include <array>
#include <stdexcept>
#include <string>
#include <system_error>

namespace quill1xml::cli {

std::FILE* makeTemporaryFile() {
    std::error_code failed;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(failed);
    std::array<wchar_t, MAX_PATH + 1> name{};
    if (failed || GetTempFileNameW(folder.c_str(), L"q1x", 0, name.data()) == 0) return nullptr;
    // "T" keeps it in memory where possible, "D" deletes it with its last handle, however the process ends.
    std::FILE* const file = _wfopen(name.data(), L"w+bTD");
    if (file == nullptr) DeleteFileW(name.data());
    return file;
}

bool seekTo(std::FILE* file, std::uint64_t place) {
    return _fseeki64(file, static_cast<std::int64_t>(place), SEEK_SET) == 0;
}

std::filesystem::path makeTemporaryFolder() {
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    const std::string name = "quill1xml-check-" + std::to_string(GetCurrentProcessId()) + "-";
    constexpr int tries = 1000;
    for (int i = 0; i < tries; ++i) {
        std::filesystem::path made = folder / (name + std::to_string(i));
        std::error_code failed;
        if (std::filesystem::create_directory(made, failed)) return made;
        if (failed) break;
    }
    throw std::runtime_error("cannot make a temporary folder in " + folder.string());
}

}  // namespace quill1xml::cli
