// Files as data inside documents.
#pragma once

#include "store/state.hpp"

namespace quill1xml::store {

/// The base64 text of a file, without line breaks; empty for an empty name. A missing or unreadable file is an Error.
std::u16string encodeImage(State& state, Text fileName);

}  // namespace quill1xml::store
