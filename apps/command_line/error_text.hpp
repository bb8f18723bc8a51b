// An error for people.
#pragma once

#include "quill1xml/error.hpp"
#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml::cli {

/// "error 5 (Login): Server: Wrong password." in UTF-8. Shortened is what the server says, and what is longer than any
/// message of ours; further lines of a message are indented, so that nothing in it looks like a message of its own.
std::string errorText(const Error& error);

/// The same, and in indented lines below it what else is known of the failure, where that says more.
std::string errorText(const Error& error, Text account);

/// A message of ours, which may quote what comes from outside: further lines are indented.
std::string messageLines(Text message);

}  // namespace quill1xml::cli
