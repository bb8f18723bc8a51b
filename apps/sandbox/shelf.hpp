// Products as a shop shows them.
#pragma once

#include "frame.hpp"
#include "listing.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace quill1xml::sandbox {

/// A category with those below it.
struct Aisle {
    std::optional<Json> here;    ///< nothing for the whole shop
    Json below = Json::array();  ///< the categories in it
};

std::string categoryChips(const Visit& visit, const Aisle& aisle);

/// The products of a list, as the catalogue gives them.
std::string shelf(const Visit& visit, const Listing& products);

/// A picture, or the first letter of a name where there is none.
std::string picture(const std::string& address, const std::string& name);

/// One product with its picture, at an address that may be empty, and what a shopper is told of it.
std::string sheet(const Visit& visit, const std::string& address, const Json& attributes, const Json& tax);

}  // namespace quill1xml::sandbox
