#include "command_line/temporary.hpp"

#include <cstdlib>
#include <stdexcept>
#include <string>

#include <sys/types.h>

namespace quill1xml::cli {

std::FILE* makeTemporaryFile() { return std::tmpfile(); }

bool seekTo(std::FILE* file, std::uint64_t place) { return fseeko(file, static_cast<off_t>(place), SEEK_SET) == 0; }

std::filesystem::path makeTemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "quill1xml-check-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make a temporary folder " + name);
    return name;
}

}  // namespace quill1xml::cli
