// The parameters of a method.
#pragma once

#include "automation/classes.hpp"

#include <string>

namespace quill1xml::automation {

/// A row for each parameter, and for each family of numbered ones.
std::string parameterTable(const Member& member);

}  // namespace quill1xml::automation
