// What the parameters of the methods mean.
#pragma once

#include "automation/classes.hpp"

#include <string>

namespace quill1xml::automation {

/// A sentence without an end: its meaning, then what its value must meet. Of a family of numbered parameters it is
/// asked for any one.
std::string meaningOf(const Member& member, const Parameter& parameter, bool ofFamily);

}  // namespace quill1xml::automation
