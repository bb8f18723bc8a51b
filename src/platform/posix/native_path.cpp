#include "platform/posix/native_path.hpp"

#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>

namespace quill1xml::platform {

NativePath::NativePath(Text name) {
    if (name.find(u'\0') != Text::npos) throw runtimeError(RuntimeError::fileNotFound, name);
    const bool ascii = std::all_of(name.begin(), name.end(), [](char16_t c) { return c < 0x80; });
    if (ascii && name.size() < short_.size()) {
        char* const end = std::transform(name.begin(), name.end(), short_.begin(),
                                         [](char16_t c) { return c == u'\\' ? '/' : static_cast<char>(c); });
        *end = '\0';
    } else {
        long_ = toUtf8(name);
        std::replace(long_.begin(), long_.end(), '\\', '/');
    }
}

Text folderOf(Text name) {
    const std::size_t separator = name.find_last_of(u"\\/");
    if (separator == Text::npos) return {};
    return name.substr(0, std::max<std::size_t>(separator, 1));
}

}  // namespace quill1xml::platform
