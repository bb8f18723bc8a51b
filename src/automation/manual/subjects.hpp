// What the methods of Store are about, for tables of contents.
#pragma once

#include "automation/classes.hpp"

#include <string>
#include <string_view>

namespace quill1xml::automation {

/// The subject of a method of Store.
std::string_view subjectOf(const Member& method);

/// A row for each subject with its methods.
std::string subjectTable();

}  // namespace quill1xml::automation
