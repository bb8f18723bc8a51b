#include "command_line/trial_folder.hpp"

#include "command_line/paths.hpp"
#include "command_line/temporary.hpp"

#include <stdexcept>
#include <system_error>

namespace quill1xml::cli {
namespace {

namespace fs = std::filesystem;

fs::path keptFolder(const fs::path& folder) {
    std::error_code failed;
    fs::create_directories(folder, failed);
    // Whether it is empty tells what stands in the way as well.
    const bool empty = fs::is_empty(folder, failed);
    if (failed)
        throw std::runtime_error("cannot use the folder " + folder.string() + ": " +
                                 failed.default_error_condition().message());
    if (!fs::is_directory(folder)) throw std::runtime_error(folder.string() + " is not a folder");
    if (!empty) throw std::runtime_error("the folder " + folder.string() + " is not empty");
    return fs::absolute(folder);
}

}  // namespace

TrialFolder::TrialFolder(const std::string& keep)
    : path_(keep.empty() ? makeTemporaryFolder() : keptFolder(pathOf(keep))), kept_(!keep.empty()) {}

TrialFolder::~TrialFolder() {
    std::error_code ignored;
    if (!kept_) fs::remove_all(path_, ignored);
}

}  // namespace quill1xml::cli
