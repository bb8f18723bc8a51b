// What the manual says of an attribute.
#pragma once

#include "records/record.hpp"

#include <string>

namespace quill1xml::automation {

/// "always; must be 1 to 10 characters", "given and at most 50 characters".
std::string conditionText(const records::Record& record, const records::Row& row);

/// What a parameter's own value must meet: "at most 50 characters", "sent when 0 or more"; empty where anything goes.
std::string limitText(const records::Record& record, const Parameter& parameter);

/// Elements and attributes that the method of a record writes, and its refusals.
std::string recordSection(const records::Record& record);

}  // namespace quill1xml::automation
