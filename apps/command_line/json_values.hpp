// Results as JSON.
#pragma once

#include "automation/classes.hpp"

#include <nlohmann/json.hpp>

namespace quill1xml::cli {

/// A result as JSON: texts and documents as strings, numbers as numbers, dates as ISO text, bytes as base64 text,
/// collections as arrays of objects with their properties in interface order; null for nothing.
/// Throws the Error of a property that cannot be read; its description begins with the object and the property.
nlohmann::ordered_json toJson(const automation::Value& value);

}  // namespace quill1xml::cli
