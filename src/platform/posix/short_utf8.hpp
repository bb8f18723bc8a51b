// Names in UTF-8 without an allocation.
#pragma once

#include "quill1xml/types.hpp"

#include <array>
#include <string>

namespace quill1xml::platform {

/// A name in UTF-8 that ends with a null. A short ASCII name needs no allocation: every record opens a file and every
/// reading of an attribute looks for a name.
class ShortUtf8 {
public:
    /// With another character for one of ASCII, where both are given.
    explicit ShortUtf8(Text text, char replaced = '\0', char replacement = '\0');

    ShortUtf8(const ShortUtf8&) = delete;
    ShortUtf8& operator=(const ShortUtf8&) = delete;

    char* begin() noexcept { return begin_; }
    char* end() noexcept { return end_; }
    const char* begin() const noexcept { return begin_; }
    const char* end() const noexcept { return end_; }

private:
    std::array<char, 256> short_;
    std::string long_;
    char* begin_ = nullptr;
    char* end_ = nullptr;
};

}  // namespace quill1xml::platform
