// Whether files can be made in a folder.
#pragma once

#include <string>
#include <system_error>

namespace quill1xml::cli {

/// Why no file can be made in the folder, as a generic error; none when that is allowed. "\" and "/" both stand between
/// folders.
std::error_code whyNotWritable(const std::string& folder);

}  // namespace quill1xml::cli
