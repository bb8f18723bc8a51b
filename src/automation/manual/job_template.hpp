// A job line to fill in.
#pragma once

#include "automation/classes.hpp"

#include <string>
#include <string_view>

namespace quill1xml::automation {

/// Stands where a value is required. No method takes it.
inline constexpr std::string_view placeholder = "<required>";

/// The call with every parameter: the required ones hold the placeholder, the others their default.
std::string jobTemplate(const Member& method);

}  // namespace quill1xml::automation
