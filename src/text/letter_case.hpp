// Texts compared without regard to case, where only ASCII letters count.
#pragma once

#include <algorithm>
#include <string_view>

namespace quill1xml {

/// The small letter of an ASCII capital; other characters as they are.
template <class Character>
constexpr Character asciiLower(Character c) {
    return c >= 'A' && c <= 'Z' ? static_cast<Character>(c + ('a' - 'A')) : c;
}

template <class Character>
constexpr bool equalIgnoringCase(std::basic_string_view<Character> a, std::basic_string_view<Character> b) {
    return std::ranges::equal(a, b, {}, asciiLower<Character>, asciiLower<Character>);
}

}  // namespace quill1xml
