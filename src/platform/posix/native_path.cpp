#include "platform/posix/native_path.hpp"

#include "quill1xml/error.hpp"

#include <algorithm>

namespace quill1xml::platform {

NativePath::NativePath(Text name) : utf8_(name) {
    if (name.find(u'\0') != Text::npos) throw runtimeError(RuntimeError::fileNotFound, name);
    std::replace(utf8_.begin(), utf8_.end(), '\\', '/');
}

Text folderOf(Text name) {
    const std::size_t separator = name.find_last_of(u"\\/");
    if (separator == Text::npos) return {};
    return name.substr(0, std::max<std::size_t>(separator, 1));
}

}  // namespace quill1xml::platform
