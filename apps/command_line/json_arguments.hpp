// The arguments of a call from a JSON object of values by parameter name.
#pragma once

#include "automation/classes.hpp"

#include <nlohmann/json.hpp>

namespace quill1xml::cli {

/// Fills in the arguments that the object gives; null counts as left out. Types are taken strictly: a string for a text
/// or date, a number for a number (whole for an integer), true or false for a Boolean.
/// Throws Error: 448 for an unknown parameter (with the nearest known one), 449 for a required one that is missing,
/// 13 for a wrong type, 6 beyond the range of a type.
void fillArguments(automation::Arguments& arguments, const automation::Member& member, const nlohmann::json& values);

}  // namespace quill1xml::cli
