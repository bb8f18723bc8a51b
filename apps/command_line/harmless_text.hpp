// Texts from outside in what people read.
#pragma once

#include "quill1xml/types.hpp"

#include <cstddef>
#include <string>
#include <string_view>

namespace quill1xml::cli {

/// The text with "\u202e" and the like for the characters that could move the cursor, begin a line or turn the
/// direction of writing.
std::u16string harmless(Text text);

/// The same in UTF-8, of at most so many characters of the text: an ellipsis stands for the rest.
std::string harmless(Text text, std::size_t characters);

/// The first 200 characters of what someone else wrote, for a message.
std::string excerpt(Text text);
std::string excerpt(std::string_view utf8);

}  // namespace quill1xml::cli
