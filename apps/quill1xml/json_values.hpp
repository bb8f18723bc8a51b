// Results as JSON.
#pragma once

#include "automation/catalogue.hpp"

#include <nlohmann/json.hpp>

namespace quill1xml::cli {

/// A result as JSON: texts as strings, numbers as numbers, bytes as base64 text; null for nothing.
nlohmann::json toJson(const automation::Value& value);

}  // namespace quill1xml::cli
