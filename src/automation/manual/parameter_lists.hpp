// The lists of AddOrder and AddQuotation, whose values stand in one text.
#pragma once

#include "automation/classes.hpp"

#include <map>
#include <string>

namespace quill1xml::automation {

/// Whether the method takes a list instead of its values.
bool takesList(const Member& member);

/// The list of a method, complete: "<Order OrderNumber='1001' .../>". What is not given has the text that leaves it
/// out. The values are text that needs no escaping.
std::u16string parameterList(std::string_view method, const std::map<std::string_view, std::string_view>& given);

/// The section of the manual: each attribute of the list, and the list to paste.
std::string listSection(const Member& member);

/// What an update of an order sends for each status.
std::string updateSection();

}  // namespace quill1xml::automation
