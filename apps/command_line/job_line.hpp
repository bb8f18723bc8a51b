// A line of a job: a call, as a JSON object with one member.
#pragma once

#include "automation/classes.hpp"

#include <nlohmann/json.hpp>

#include <string>

namespace quill1xml::cli {

/// An object with one member, the method's name. Throws error 5 that says what is wrong with a line that is no call; a
/// name that stands twice in one object is refused rather than half ignored.
nlohmann::json parseJobLine(const std::string& line);

/// The method that a parsed line calls. Throws error 438 with the nearest known name for one that is not known, and
/// error 5 when its arguments are no object.
const automation::Member& calledMethod(const nlohmann::json& call);

/// An argument that is a text; empty where there is none of this name.
std::string textOf(const nlohmann::json& values, const char* name);

/// Whether a line holds nothing but blanks.
inline bool isBlankLine(const std::string& line) { return line.find_first_not_of(" \t\r") == std::string::npos; }

}  // namespace quill1xml::cli
