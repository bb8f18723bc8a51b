// The folder in which a job is tried out.
#pragma once

#include <filesystem>
#include <string>

namespace quill1xml::cli {

/// A temporary folder, gone with all its files in the end, or one that is kept.
class TrialFolder {
public:
    /// Takes the folder to keep, made where it is not there; empty for a temporary one. Throws std::runtime_error when
    /// it is not empty, or cannot be made.
    explicit TrialFolder(const std::string& keep);

    ~TrialFolder();
    TrialFolder(const TrialFolder&) = delete;
    TrialFolder& operator=(const TrialFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
    bool kept_;
};

}  // namespace quill1xml::cli
