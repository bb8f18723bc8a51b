// The pages of what shoppers see and do: the front page, the catalogue, customers, orders, quotations, images.
#pragma once

#include "frame.hpp"
#include "listing.hpp"
#include "shelf.hpp"

#include <string>
#include <vector>

namespace quill1xml::sandbox {

std::string productsPage(const Visit& visit, const Aisle& aisle, const Listing& products);
std::string customersPage(const Visit& visit, const Listing& customers);
std::string ordersPage(const Visit& visit, const Listing& orders);
std::string quotationsPage(const Visit& visit, const Listing& quotations);
std::string imagesPage(const Visit& visit, const Listing& images);

/// The beginning of every list.
struct Front {
    Json categories;               ///< those at the top
    std::vector<Listing> shelves;  ///< of the first of those categories; none for a search
    Listing products;              ///< of the whole shop
    Listing orders;
    Listing quotations;
    Listing customers;
    Listing images;
    Listing imports;
    Listing refusals;
};

std::string frontPage(const Visit& visit, const Front& front);

}  // namespace quill1xml::sandbox
