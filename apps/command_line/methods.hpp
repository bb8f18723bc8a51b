// Methods of Store by the names that users type.
#pragma once

#include "automation/classes.hpp"

#include <string>

namespace quill1xml::cli {

/// The method of exactly that name. Throws error 438 with the nearest name when there is none.
const automation::Member& methodNamed(const std::string& name);

}  // namespace quill1xml::cli
