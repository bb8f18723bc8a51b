// Shows UTF-16 texts as UTF-8 when an assertion fails.
#pragma once

#include "quill1xml/text.hpp"

#include <gtest/gtest.h>

#include <string>

namespace quill1xml::testing {

/// UTF-8 of a UTF-16 text, so that failures can be read.
inline std::string utf8(std::u16string_view text) { return toUtf8(text); }

}  // namespace quill1xml::testing
