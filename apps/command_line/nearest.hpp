// The known name that a mistyped one is nearest to.
#pragma once

#include <span>
#include <string_view>

namespace quill1xml::cli {

/// The candidate with the fewest letters to change, without regard to case; empty when there are no candidates.
std::string_view nearestName(std::string_view name, std::span<const std::string_view> candidates);

}  // namespace quill1xml::cli
