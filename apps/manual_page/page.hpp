// The manual as one HTML page.
#pragma once

#include <string>

namespace quill1xml::manual_page {

/// The chapters of docs/ and the reference, complete in itself: with a table of contents and a search that also work
/// from a file.
std::string page();

}  // namespace quill1xml::manual_page
