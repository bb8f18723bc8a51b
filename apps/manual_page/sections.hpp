// A Markdown text by its headings.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quill1xml::manual_page {

struct Section {
    int level = 0;          ///< how many "#" its heading has
    std::string title{};    ///< Markdown
    std::string id{};       ///< of its place in the page
    std::string_view body;  ///< what follows the heading, up to the next one
};

/// The sections up to the level given, in their order; deeper headings are part of a body. The first one has the id
/// given, which the ids of the others begin with.
std::vector<Section> sectionsOf(std::string_view markdown, std::string_view id, int deepest);

}  // namespace quill1xml::manual_page
