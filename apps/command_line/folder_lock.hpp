// One job at a time in a packet folder.
#pragma once

#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml::cli {

/// Holds a packet folder for this process. The system lets go of it when the process ends, however that happens.
class FolderLock {
public:
    /// Takes a host's name of a folder. Throws error 70, with the process that holds the folder and what to do, when
    /// another job is at work there. A folder that is not there is not held.
    explicit FolderLock(Text folder);

    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    ~FolderLock();

    bool holds() const noexcept { return descriptor_ != -1; }

    /// Why the folder cannot be held although it is there; empty otherwise.
    const std::string& obstacle() const noexcept { return obstacle_; }

private:
    /// One attempt; false when the file was removed meanwhile.
    bool tryToHold(Text folder);

    const std::string path_;
    std::string obstacle_;
    int descriptor_ = -1;
};

}  // namespace quill1xml::cli
