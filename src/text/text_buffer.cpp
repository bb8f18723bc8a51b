#include "text/text_buffer.hpp"

namespace quill1xml {

void TextBuffer::grow(std::size_t characters) {
    capacity_ = std::max(size_ + characters, 2 * capacity_ + 256);
    auto larger = std::make_unique_for_overwrite<char16_t[]>(capacity_);
    std::copy_n(data_.get(), size_, larger.get());
    data_ = std::move(larger);
}

}  // namespace quill1xml
