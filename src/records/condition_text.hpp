// Conditions in words.
#pragma once

#include "records/row.hpp"

#include <span>
#include <string>

namespace quill1xml::records {

/// "at most 50 characters", "0 or more", "one of "Parent", "None", "Child"".
std::string textOf(const Test& test);

/// The parameter that a field is; empty for no field.
std::string_view parameterAt(std::span<const Parameter> parameters, Field field);

}  // namespace quill1xml::records
