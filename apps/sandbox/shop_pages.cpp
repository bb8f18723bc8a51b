#include "shop_pages.hpp"

#include "arrival_pages.hpp"
#include "html.hpp"
#include "shelf.hpp"

#include <array>
#include <cstdio>

namespace quill1xml::sandbox {
namespace {

std::string goodsOf(const Json& row, const std::string& currency) {
    if (!row.at("goods").is_number()) return {};
    std::array<char, 400> text{};  // the longest double has 309 digits before its point
    std::snprintf(text.data(), text.size(), "%.2f", row.at("goods").get<double>());
    return escaped(std::string(text.data()) + (currency.empty() ? "" : " " + currency));
}

std::string statusBadge(const std::string& status) {
    if (status.empty()) return {};
    const char* mood = status == "Dispatched" ? " good" : status == "Cancelled" || status == "OnHold" ? " bad" : "";
    return std::string("<span class=\"badge") + mood + "\">" + escaped(status) + "</span>";
}

std::string recordLink(const Json& row, const std::string& text) {
    return link(recordAddress(row.at("id").get<std::int64_t>()), text.empty() ? "(none)" : text);
}

std::string customerTable(const Listing& customers) {
    Table table("Customers", {{"Name"}, {"E-mail"}, {"Debtor"}, {"Address"}});
    for (const Json& row : customers.rows) {
        const auto shown = [&](const char* name) { return escaped(attributeOf(row.at("attributes"), name)); };
        const std::string name = attributeOf(row.at("attributes"), "Name");
        table.row({recordLink(row, name.empty() ? attributeOf(row.at("attributes"), "EMailAddress") : name),
                   shown("EMailAddress"), shown("DebtorID"),
                   joined({shown("AddressLine1"), shown("PostalCode"), shown("City"), shown("CountryCode")}, ", ")});
    }
    return table.html();
}

std::string orderTable(const Listing& orders) {
    Table table("Orders", {{"Order"}, {"Date"}, {"Customer"}, {"Status"}, {"Lines", true}, {"Goods", true}});
    for (const Json& row : orders.rows) {
        const Json& attributes = row.at("attributes");
        const auto shown = [&](const char* name) { return escaped(attributeOf(attributes, name)); };
        table.row({recordLink(row, attributeOf(attributes, "OrderNumber")),
                   escaped(shownTime(attributeOf(attributes, "OrderDate"))),
                   joined({shown("CustomerCompanyName"), shown("ShippingContactName"), shown("ShippingCity")}, ", "),
                   statusBadge(attributeOf(attributes, "OrderStatus")), row.at("lines").dump(),
                   goodsOf(row, attributeOf(attributes, "DisplayCurrencyCode"))});
    }
    return table.html();
}

std::string quotationTable(const Listing& quotations) {
    Table table("Quotations", {{"Quotation"}, {"Date"}, {"Customer"}, {"Currency"}, {"Lines", true}, {"Delivery"}});
    for (const Json& row : quotations.rows) {
        const Json& attributes = row.at("attributes");
        const auto shown = [&](const char* name) { return escaped(attributeOf(attributes, name)); };
        // Published ones name it otherwise than those that shoppers leave.
        const std::string currency = shown("Currency") + shown("QuoteCurrency");
        table.row({recordLink(row, attributeOf(attributes, "QuoteNumber")),
                   escaped(shownTime(attributeOf(attributes, "QuoteDate"))),
                   joined({shown("ContactName"), shown("City"), shown("CountryCode")}, ", "), currency,
                   row.at("lines").dump(), shown("DeliveryMethod")});
    }
    return table.html();
}

std::string imageShelf(const Listing& images) {
    std::string html = "<ul class=\"shelf\">\n";
    for (const Json& image : images.rows) {
        const auto& folder = image.at("folder").get_ref<const std::string&>();
        const auto& name = image.at("name").get_ref<const std::string&>();
        const std::string path = imageAddress(folder, name);
        html += "<li class=\"card\">" + picture(path, "") + "<div class=\"text\">" + link(path, name) +
                "<p class=\"sku\">" + escaped(folder) + " · " + image.at("size").dump() + " bytes</p></div></li>\n";
    }
    return html + "</ul>\n";
}

/// One list on the front page, with the way to all of it.
std::string section(const Visit& visit, std::string_view title, std::string_view path, const Listing& listing,
                    const std::string& shown, std::string_view hint, const std::string& above = {}) {
    if (listing.total == 0 && !visit.wanted.text.empty()) return {};
    const bool more = listing.pages > 1;
    return "<section>\n<h2>" + escaped(title) + " " + amountOf(visit, listing) +
           (more ? "<span class=\"more\">" +
                       link(visit.to(path, {{"q", visit.wanted.text}}), "All " + std::to_string(listing.total)) +
                       "</span>"
                 : "") +
           "</h2>\n" + above + (listing.total == 0 ? "<p class=\"hint\">" + escaped(hint) + "</p>\n" : shown) +
           "</section>\n";
}

/// A few products of each category, so that the whole range is seen; of a shop without categories just a few.
std::string shelves(const Visit& visit, const Front& front) {
    std::string html;
    for (std::size_t i = 0; i < front.shelves.size(); ++i) {
        const Listing& products = front.shelves[i];
        const Json& category = front.categories.at(i);
        const std::string address =
            visit.to("/products", {{"q", visit.wanted.text}, {"category", category.at("id").get<std::string>()}});
        if (products.total > 0)
            html += "<h3>" + link(address, category.at("name").get<std::string>()) + " " + amountOf(visit, products) +
                    "</h3>\n" + shelf(visit, products);
    }
    return html.empty() ? shelf(visit, front.products) : html;
}

constexpr std::string_view noProducts = "Nothing has been published yet.";
constexpr std::string_view noShoppers = "There are none. Post to /seed for a few.";
constexpr std::string_view noImages = "None have been sent.";

}  // namespace

std::string productsPage(const Visit& visit, const Aisle& aisle, const Listing& products) {
    const std::string title = aisle.here ? aisle.here->at("name").get<std::string>() : "Products";
    return listPage(visit, title, products, shelf(visit, products), noProducts, categoryChips(visit, aisle));
}

std::string customersPage(const Visit& visit, const Listing& customers) {
    return listPage(visit, "Customers", customers, customerTable(customers), noShoppers);
}

std::string ordersPage(const Visit& visit, const Listing& orders) {
    return listPage(visit, "Orders", orders, orderTable(orders), noShoppers);
}

std::string quotationsPage(const Visit& visit, const Listing& quotations) {
    return listPage(visit, "Quotations", quotations, quotationTable(quotations), noShoppers);
}

std::string imagesPage(const Visit& visit, const Listing& images) {
    return listPage(visit, "Images", images, imageShelf(images), noImages);
}

std::string frontPage(const Visit& visit, const Front& front) {
    const std::string sections =
        section(visit, "Catalogue", "/products", front.products, shelves(visit, front), noProducts,
                categoryChips(visit, {std::nullopt, front.categories})) +
        section(visit, "Orders", "/orders", front.orders, orderTable(front.orders), noShoppers) +
        section(visit, "Quotations", "/quotations", front.quotations, quotationTable(front.quotations), noShoppers) +
        section(visit, "Customers", "/customers", front.customers, customerTable(front.customers), noShoppers) +
        section(visit, "Images", "/images", front.images, imageShelf(front.images), noImages) +
        section(visit, "Imports", "/imports", front.imports, importTable(front.imports), noImports) +
        section(visit, "Refused", "/refusals", front.refusals, refusalTable(front.refusals), noRefusals);
    return framed(visit, "Shop window",
                  sections.empty() ? "<p class=\"hint\">" + nothing(visit, noProducts) + "</p>\n" : sections);
}

}  // namespace quill1xml::sandbox
