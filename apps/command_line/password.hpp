// Where a password comes from. It is no option: every user of the machine can read the options of a process.
#pragma once

#include <string>

namespace quill1xml::cli {

/// The first line of the file where one is named, else the environment's QUILL1XML_PASSWORD, else what the user types
/// on the terminal. Throws std::runtime_error when there is none of these.
std::string readPassword(const std::string& file, const std::string& user);

}  // namespace quill1xml::cli
