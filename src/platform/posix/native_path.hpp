// File names as the system takes them.
#pragma once

#include "platform/posix/short_utf8.hpp"

namespace quill1xml::platform {

/// A host's file name in UTF-8 with "/" between folders.
class NativePath {
public:
    /// Throws error 53 for a name with a null character, which would end it early.
    explicit NativePath(Text name);

    const char* c_str() const noexcept { return utf8_.begin(); }

private:
    ShortUtf8 utf8_;
};

/// The folder of a host's file name, without the separator at its end unless it is the root; empty when there is none.
Text folderOf(Text name);

}  // namespace quill1xml::platform
