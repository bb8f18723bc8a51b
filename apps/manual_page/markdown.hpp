// Markdown as HTML.
#pragma once

#include <string>
#include <string_view>

namespace quill1xml::manual_page {

/// The text as it stands between tags.
std::string escaped(std::string_view text);

/// The HTML of a Markdown text with tables. HTML in it shows as text. Links to chapters of docs/ go to their place in
/// the page. Throws when memory runs out.
std::string htmlOf(std::string_view markdown);

}  // namespace quill1xml::manual_page
