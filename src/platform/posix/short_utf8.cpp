#include "platform/posix/short_utf8.hpp"

#include "quill1xml/text.hpp"

#include <algorithm>

namespace quill1xml::platform {

ShortUtf8::ShortUtf8(Text text, char replaced, char replacement) {
    // One pass without a branch, as all but a few names are short and ASCII.
    char16_t all = 0;
    if (text.size() < short_.size()) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            all = static_cast<char16_t>(all | text[i]);
            const char c = static_cast<char>(text[i]);
            short_[i] = c == replaced ? replacement : c;
        }
        short_[text.size()] = '\0';
        begin_ = short_.data();
        end_ = begin_ + text.size();
    }
    if (text.size() < short_.size() && all < 0x80) return;
    long_ = toUtf8(text);
    std::replace(long_.begin(), long_.end(), replaced, replacement);
    begin_ = long_.data();
    end_ = begin_ + long_.size();
}

}  // namespace quill1xml::platform
