// The pages of what arrived: imports, refused posts, records as they came.
#pragma once

#include "frame.hpp"
#include "listing.hpp"

#include <string>
#include <string_view>

namespace quill1xml::sandbox {

inline constexpr std::string_view noImports = "Nothing has been published yet.";
inline constexpr std::string_view noRefusals = "Nothing was refused.";

std::string importTable(const Listing& imports);
std::string refusalTable(const Listing& refusals);

std::string importsPage(const Visit& visit, const Listing& imports);
std::string importPage(const Visit& visit, const Json& import);
std::string refusalsPage(const Visit& visit, const Listing& refusals);
std::string refusalPage(const Visit& visit, const Json& refusal);

/// Kinds as {kind: count}.
std::string recordsPage(const Visit& visit, const Json& kinds, const Listing& records);

/// A record as recordDetail gives it; above stands what else is to be shown of it, in HTML.
std::string recordPage(const Visit& visit, const Json& record, const std::string& above);

}  // namespace quill1xml::sandbox
