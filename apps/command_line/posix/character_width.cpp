#include "command_line/character_width.hpp"

#include <utf8proc.h>

namespace quill1xml::cli {

std::size_t characterWidth(char32_t character) {
    return static_cast<std::size_t>(utf8proc_charwidth(static_cast<utf8proc_int32_t>(character)));
}

}  // namespace quill1xml::cli
