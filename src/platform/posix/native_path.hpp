// File names as the system takes them.
#pragma once

#include "quill1xml/types.hpp"

#include <array>
#include <string>

namespace quill1xml::platform {

/// A host's file name in UTF-8 with "/" between folders. Short ASCII names need no allocation: a packet file is opened
/// anew for every record.
class NativePath {
public:
    /// Throws error 53 for a name with a null character, which would end it early.
    explicit NativePath(Text name);

    NativePath(const NativePath&) = delete;
    NativePath& operator=(const NativePath&) = delete;

    const char* c_str() const noexcept { return long_.empty() ? short_.data() : long_.c_str(); }

private:
    std::array<char, 256> short_;
    std::string long_;
};

/// The folder of a host's file name, without the separator at its end unless it is the root; empty when there is none.
Text folderOf(Text name);

}  // namespace quill1xml::platform
