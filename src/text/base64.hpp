// Base64 of RFC 4648, without line breaks.
#pragma once

#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml {

void appendBase64(std::u16string& out, const Bytes& bytes);

}  // namespace quill1xml
