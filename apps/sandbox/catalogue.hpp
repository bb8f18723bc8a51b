// The shop as shoppers see it: its name, its categories, its products with picture, price, stock and tax.
#pragma once

#include "listing.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace quill1xml::sandbox {

/// {"storeId", "attributes", "symbol"}: of the given store, else of the one that published last; what it said of itself
/// last, and the sign of its currency. Nothing when it has published nothing.
std::optional<Json> shop(Storage& storage, std::optional<std::int64_t> store);

/// The numbers of the stores that published, the latest first, 20 at most.
Json shops(Storage& storage);

/// [{"id", "name"}], in their ranking and 200 at most: the categories below one; those at the top when it is empty.
Json categoriesBelow(Storage& storage, std::optional<std::int64_t> store, const std::string& parent);

/// {"id", "name", "parent", "parentName"} of a category; nothing when it does not stand in the store. At the top the
/// parent is empty.
std::optional<Json> category(Storage& storage, std::optional<std::int64_t> store, const std::string& id);

/// [{"id", "attributes", "picture", "tax"}] in their ranking; of a category and all below it unless that is empty. The
/// picture is an address of this server or empty, the tax the attributes of its record or null.
Listing products(Storage& storage, std::optional<std::int64_t> store, const std::string& category,
                 const Wanted& wanted);

/// The attributes of a product's tax record; null when it has none.
Json taxOf(Storage& storage, std::optional<std::int64_t> store, const Json& attributes);

/// The picture of a product, as products gives it. Requires the record's id and attributes.
std::string pictureOf(Storage& storage, std::optional<std::int64_t> store, std::int64_t id, const Json& attributes);

}  // namespace quill1xml::sandbox
