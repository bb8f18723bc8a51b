// A text being put together from many small pieces, without a check for space at every character.
#pragma once

#include "quill1xml/types.hpp"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace quill1xml {

class TextBuffer {
public:
    /// Makes room for so many characters behind the end and returns the end, to be written from.
    char16_t* room(std::size_t characters) {
        if (capacity_ - size_ < characters) grow(characters);
        return data_.get() + size_;
    }

    /// Says where the writing ended that `room` began.
    void endAt(const char16_t* end) { size_ = static_cast<std::size_t>(end - data_.get()); }

    void append(Text text) { endAt(std::copy(text.begin(), text.end(), room(text.size()))); }
    void push(char16_t character) {
        *room(1) = character;
        ++size_;
    }

    void clear() { size_ = 0; }
    bool empty() const { return size_ == 0; }
    void swap(TextBuffer& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
    }
    Text view() const { return {data_.get(), size_}; }

private:
    /// Not inline, so that everything else is.
    void grow(std::size_t characters);

    std::unique_ptr<char16_t[]> data_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace quill1xml
