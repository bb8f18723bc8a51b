#include "shelf.hpp"

#include "answers.hpp"
#include "html.hpp"

#include <algorithm>

namespace quill1xml::sandbox {
namespace {

constexpr std::int64_t fewItems = 10;

/// A whole UTF-8 character.
std::string firstLetter(std::string_view name) {
    std::size_t end = std::min<std::size_t>(1, name.size());
    while (end < name.size() && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) ++end;
    return std::string(name.substr(0, end));
}

std::string ofShop(const Visit& visit, const char* name) {
    return visit.shop ? attributeOf(visit.shop->at("attributes"), name) : std::string();
}

/// A store may have its own words for it.
std::string stockOf(const Visit& visit, const Json& attributes) {
    const std::string quantity = shownNumber(attributeOf(attributes, "QuantityOnHand"));
    if (quantity.empty()) return {};
    const std::optional<std::int64_t> count = wholeNumber(quantity);
    const bool isThere = !count || *count > 0;
    const char* grade = !isThere ? "none" : count && *count < fewItems ? "few" : "some";
    const std::string message = ofShop(visit, isThere ? "StockAboveZeroMessage" : "StockBelowZeroMessage");
    return std::string("<p class=\"stock ") + grade + "\">" +
           escaped(message.empty() ? quantity + " in stock" : message + " · " + quantity) + "</p>\n";
}

std::string taxOf(const Json& attributes, const Json& tax, bool isInPrice) {
    const std::string code = attributeOf(attributes, "TaxCode");
    if (code.empty()) return {};
    const std::string rate = shownNumber(attributeOf(tax, "Rate"));
    const std::string description = attributeOf(tax, "Description");
    return "<p class=\"tax\"" + (description.empty() ? "" : " title=\"" + escaped(description) + '"') + ">" +
           (isInPrice ? "incl. " : "plus ") + escaped(rate.empty() ? "tax " + code : rate + " % tax, " + code) +
           "</p>\n";
}

/// What a shopper is told of a product beside its name and picture.
std::string offerOf(const Visit& visit, const Json& attributes, const Json& tax) {
    const std::string withTax = attributeOf(attributes, "PriceIncl1");
    const bool isInPrice = ofShop(visit, "PriceDisplay") == "TaxInclusive" && !withTax.empty();
    const std::string price = shownAmount(isInPrice ? withTax : attributeOf(attributes, "Price1"));
    const std::string symbol = visit.shop ? visit.shop->at("symbol").get<std::string>() : "";
    return stockOf(visit, attributes) + "<p class=\"price\">" +
           (price.empty() ? "no price" : escaped(symbol + (symbol.empty() ? "" : "\u00A0") + price)) + "</p>\n" +
           taxOf(attributes, tax, isInPrice);
}

/// Some products have nothing but their number.
std::string nameOf(const Json& attributes) {
    const std::string description = attributeOf(attributes, "Description");
    return description.empty() ? attributeOf(attributes, "SKU") : description;
}

}  // namespace

std::string categoryChips(const Visit& visit, const Aisle& aisle) {
    if (aisle.below.empty() && !aisle.here) return {};
    const auto chip = [&](const std::string& id, const std::string& name, bool isHere) {
        return "<li><a href=\"" + escaped(visit.to("/products", {{"q", visit.wanted.text}, {"category", id}})) + '"' +
               (isHere ? " aria-current=\"true\"" : "") + ">" + escaped(name) + "</a></li>\n";
    };
    std::string html = "<ul class=\"chips\" aria-label=\"Categories\">\n" + chip("", "All", !aisle.here);
    if (aisle.here) {
        const auto& parent = aisle.here->at("parent").get_ref<const std::string&>();
        if (!parent.empty()) html += chip(parent, "‹ " + aisle.here->at("parentName").get<std::string>(), false);
        html += chip(aisle.here->at("id").get<std::string>(), aisle.here->at("name").get<std::string>(), true);
    }
    for (const Json& category : aisle.below)
        html += chip(category.at("id").get<std::string>(), category.at("name").get<std::string>(), false);
    return html + "</ul>\n";
}

std::string picture(const std::string& address, const std::string& name) {
    if (address.empty()) return "<div class=\"picture\" aria-hidden=\"true\">" + escaped(firstLetter(name)) + "</div>";
    return "<div class=\"picture photo\"><img src=\"" + escaped(address) + "\" alt=\"\" loading=\"lazy\"></div>";
}

std::string shelf(const Visit& visit, const Listing& products) {
    std::string html = "<ul class=\"shelf\">\n";
    for (const Json& product : products.rows) {
        const Json& attributes = product.at("attributes");
        const std::string name = nameOf(attributes);
        html += "<li class=\"card\">" + picture(product.at("picture").get<std::string>(), name) +
                "<div class=\"text\">" + link(recordAddress(product.at("id").get<std::int64_t>()), name) +
                "<p class=\"sku code\">" + escaped(attributeOf(attributes, "SKU")) + "</p>\n" +
                offerOf(visit, attributes, product.at("tax")) + "</div></li>\n";
    }
    return html + "</ul>\n";
}

std::string sheet(const Visit& visit, const std::string& address, const Json& attributes, const Json& tax) {
    const std::string name = nameOf(attributes);
    return "<div class=\"sheet\">" + picture(address, name) + "<div><p class=\"name\">" + escaped(name) + "</p>\n" +
           offerOf(visit, attributes, tax) + "</div></div>\n";
}

}  // namespace quill1xml::sandbox
