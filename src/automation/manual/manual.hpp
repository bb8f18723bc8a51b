// The reference manual, derived from the declarations.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quill1xml::automation {

/// The manual in Markdown, UTF-8: every class, member, parameter, default, attribute, condition, limit and message, and
/// an example of every method with what it writes.
std::string manual();

/// What the manual says of a method of Store, a class or an event, whatever the case of its name. Nothing when there is
/// none of the name.
std::optional<std::string> manualEntry(std::string_view name);

/// The names that have an entry.
std::vector<std::string_view> manualNames();

}  // namespace quill1xml::automation
