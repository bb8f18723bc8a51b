// A folder of a test's own, gone with all its files when the test is over.
#pragma once

#include "quill1xml/types.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

namespace quill1xml::testing {

class TempFolder {
public:
    TempFolder() { std::filesystem::create_directories(path_); }

    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

    /// A file in the folder by the name a host would use, with "\" between folders.
    std::u16string name(Text file) const {
        std::u16string name = (path_ / std::filesystem::path(file)).u16string();
        std::replace(name.begin(), name.end(), u'/', u'\\');
        return name;
    }

    /// Creates a file of these bytes and returns its name.
    std::u16string create(Text file, std::string_view bytes) const {
        std::ofstream(path_ / std::filesystem::path(file), std::ios::binary) << bytes;
        return name(file);
    }

    std::string bytes(Text file) const {
        std::ifstream in(path_ / std::filesystem::path(file), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    std::filesystem::path path_ =
        std::filesystem::temp_directory_path() / ("quill1xml-" + std::to_string(std::random_device()()));
};

}  // namespace quill1xml::testing
