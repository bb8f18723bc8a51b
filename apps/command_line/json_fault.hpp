// What is wrong with a line that is not JSON.
#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace quill1xml::cli {

/// For a message about the line: the place in it, the reason, and what was probably meant.
std::string faultText(const std::string& line, const nlohmann::json::exception& error);

}  // namespace quill1xml::cli
