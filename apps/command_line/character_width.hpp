// How many columns of a terminal a character takes.
#pragma once

#include <cstddef>

namespace quill1xml::cli {

/// Two for East Asian wide characters and emoji, none for combining marks and joiners, else one, as far as the system
/// knows them.
std::size_t characterWidth(char32_t character);

}  // namespace quill1xml::cli
