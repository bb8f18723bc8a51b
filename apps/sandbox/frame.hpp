// What surrounds every page: the shop's name, the search, the ways to the other pages, the addresses.
#pragma once

#include "html.hpp"
#include "listing.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quill1xml::sandbox {

/// Who looks at what.
struct Visit {
    std::string path;                   ///< of the page; its search goes there
    std::string url;                    ///< of the server
    std::optional<std::int64_t> asked;  ///< the store that was asked for; usually the one that published last
    std::optional<Json> shop;           ///< as the catalogue gives it
    Json shops = Json::array();
    Wanted wanted;
    Parameters filter = {};  ///< what else the list was asked for

    /// The store whose records are shown; nothing before the first import.
    std::optional<std::int64_t> store() const;

    /// The address of another page, or of another page of the same list, in the same store.
    std::string to(std::string_view otherPath, Parameters parameters = {}) const;
    std::string toPage(std::int64_t page) const;
};

/// A complete HTML document in UTF-8 that needs nothing but the images it names. The title is text.
std::string framed(const Visit& visit, std::string_view title, const std::string& content);

/// A document for what cannot be shown.
std::string errorPage(int status, std::string_view message);

/// The page of one list: what is above it, the rows as they are shown, the ways to its other pages; a hint when it is
/// empty.
std::string listPage(const Visit& visit, std::string_view title, const Listing& listing, const std::string& shown,
                     std::string_view hint, const std::string& above = {});

/// The hint for an empty list, or that nothing was found.
std::string nothing(const Visit& visit, std::string_view hint);

/// How many rows a list has in all.
std::string amountOf(const Visit& visit, const Listing& listing);

}  // namespace quill1xml::sandbox
