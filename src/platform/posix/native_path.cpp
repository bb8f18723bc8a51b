#include "platform/posix/native_path.hpp"

#include "quill1xml/error.hpp"

#include <algorithm>
#include <cstring>

namespace quill1xml::platform {

NativePath::NativePath(Text name) : utf8_(name, '\\', '/') {
    if (std::strlen(utf8_.begin()) != static_cast<std::size_t>(utf8_.end() - utf8_.begin())) {
        throw runtimeError(RuntimeError::fileNotFound, name);
    }
}

Text folderOf(Text name) {
    const std::size_t separator = name.find_last_of(u"\\/");
    if (separator == Text::npos) return {};
    return name.substr(0, std::max<std::size_t>(separator, 1));
}

}  // namespace quill1xml::platform
