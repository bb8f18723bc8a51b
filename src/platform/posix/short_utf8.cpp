#include "platform/posix/short_utf8.hpp"

#include "quill1xml/text.hpp"

#include <algorithm>

namespace quill1xml::platform {

ShortUtf8::ShortUtf8(Text text) {
    const bool ascii = std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x80; });
    if (ascii && text.size() < short_.size()) {
        begin_ = short_.data();
        end_ = std::transform(text.begin(), text.end(), begin_, [](char16_t c) { return static_cast<char>(c); });
        *end_ = '\0';
    } else {
        long_ = toUtf8(text);
        begin_ = long_.data();
        end_ = begin_ + long_.size();
    }
}

}  // namespace quill1xml::platform
