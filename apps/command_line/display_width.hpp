// How many columns of a terminal a text takes.
#pragma once

#include "quill1xml/types.hpp"

#include <cstddef>
#include <string>

namespace quill1xml::cli {

/// In columns: two for East Asian wide characters and emoji, none for combining marks and joiners, else one.
std::size_t displayWidth(Text text);

/// The text where it fits into so many columns (at least one), else its beginning with an ellipsis.
std::u16string fitted(Text text, std::size_t columns);

}  // namespace quill1xml::cli
