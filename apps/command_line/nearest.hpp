// The known name that a mistyped one is nearest to.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quill1xml::cli {

/// The candidate with the most words in common and, among those, the fewest letters to change in the others, without
/// regard to case. A word begins with a capital letter; an abbreviation has those in common that it stands for. Empty
/// when there are no candidates, or the name is far too long to be one.
std::string_view nearestName(std::string_view name, std::span<const std::string_view> candidates);

/// An unknown name for a message, with the nearest known one where there is any.
std::string unknownName(std::string_view name, std::span<const std::string_view> candidates);

}  // namespace quill1xml::cli
