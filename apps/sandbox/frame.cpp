#include "frame.hpp"

#include "addresses.hpp"
#include "style.hpp"

#include <algorithm>

namespace quill1xml::sandbox {
namespace {

struct Tab {
    std::string_view path;
    std::string_view name;
};

constexpr Tab tabs[] = {
    {"/", "Shop window"},    {"/products", "Products"},     {"/customers", "Customers"},
    {"/orders", "Orders"},   {"/quotations", "Quotations"}, {"/images", "Images"},
    {"/imports", "Imports"}, {"/refusals", "Refused"},      {"/records", "Records"},
};

std::string numberOf(const std::optional<std::int64_t>& number) { return number ? std::to_string(*number) : ""; }

/// Below a list stand the pages of its rows.
bool leadsTo(std::string_view tab, std::string_view path) {
    return tab == path || (tab.size() > 1 && path.starts_with(tab) && path.substr(tab.size()).starts_with('/'));
}

std::string tabList(const Visit& visit) {
    std::string html = "<nav aria-label=\"Pages of the store\"><ul class=\"inner tabs\">\n";
    for (const Tab& tab : tabs)
        html += "<li><a href=\"" + escaped(visit.to(tab.path)) + '"' +
                (leadsTo(tab.path, visit.path) ? " aria-current=\"page\"" : "") + '>' + std::string(tab.name) +
                "</a></li>\n";
    return html + "</ul></nav>\n";
}

std::string hidden(std::string_view name, const std::string& value) {
    if (value.empty()) return {};
    return "<input type=\"hidden\" name=\"" + std::string(name) + "\" value=\"" + escaped(value) + "\">";
}

/// Pages of one thing search everything.
std::string searchForm(const Visit& visit) {
    const bool isList = std::ranges::any_of(tabs, [&](const Tab& tab) { return tab.path == visit.path; });
    const std::string path = isList ? visit.path : "/";
    std::string filter = hidden("store", numberOf(visit.asked));
    for (const auto& [name, value] : visit.filter) filter += hidden(name, value);
    return "<form role=\"search\" action=\"" + escaped(path) +
           "\"><input type=\"search\" name=\"q\" aria-label=\"Search\" placeholder=\"Search " +
           (path == "/" ? "the shop" : "this list") + "\" value=\"" + escaped(visit.wanted.text) + "\">" + filter +
           "<button>Search</button></form>\n";
}

std::string storeLinks(const Visit& visit) {
    std::string html;
    if (visit.shops.size() < 2) return html;
    for (const Json& number : visit.shops) {
        const std::string name = "Store " + number.dump();
        html += (html.empty() ? "" : " · ") + (visit.store() == number.get<std::int64_t>()
                                                   ? "<strong>" + name + "</strong>"
                                                   : link(address("/", {{"store", number.dump()}}), name));
    }
    return "<span>" + html + "</span>\n";
}

std::string addressList() {
    std::string html = "<details><summary>Every address of this store</summary>\n<ul class=\"addresses\">\n";
    for (const Address& address : addresses()) {
        const std::string path(address.path);
        const bool opens =
            address.method == "GET" && std::ranges::none_of(path, [](char c) { return c >= 'A' && c <= 'Z'; });
        html += "<li><code>" + std::string(address.method) + ' ' + (opens ? link(path, path) : escaped(path)) +
                "</code> " + escaped(address.what) + "</li>\n";
    }
    return html + "</ul></details>\n";
}

std::string shopName(const Visit& visit) {
    std::string name = visit.shop ? attributeOf(visit.shop->at("attributes"), "Name") : "";
    if (!name.empty()) return name;
    return visit.shop ? "Store " + visit.shop->at("storeId").dump() : "Web store";
}

std::string heading(const Visit& visit) {
    const std::string tagline = visit.shop ? attributeOf(visit.shop->at("attributes"), "ShortDescription") : "";
    return "<header>\n<div class=\"inner brand\"><div><p class=\"shop\">" + link(visit.to("/"), shopName(visit)) +
           "</p>\n<p class=\"tagline\">" +
           escaped(tagline.empty() ? "A web store on this machine, for trying things out" : tagline) + "</p></div>\n" +
           searchForm(visit) + "</div>\n" + tabList(visit) + "</header>\n";
}

/// The ways to the other pages of a list; empty when it has one.
std::string pager(const Visit& visit, const Listing& listing) {
    if (listing.pages < 2) return {};
    const auto to = [&](std::int64_t page, std::string_view name, bool possible, const char* rel) {
        if (!possible) return "<span>" + std::string(name) + "</span>\n";
        return "<a href=\"" + escaped(visit.toPage(page)) + '"' + rel + '>' + std::string(name) + "</a>\n";
    };
    const bool first = listing.page == 1;
    const bool last = listing.page == listing.pages;
    return "<nav class=\"pages\" aria-label=\"Pages of this list\">\n" + to(1, "First", !first, "") +
           to(listing.page - 1, "Previous", !first, " rel=\"prev\"") + "<span>Page " + std::to_string(listing.page) +
           " of " + std::to_string(listing.pages) + "</span>\n" + to(listing.page + 1, "Next", !last, " rel=\"next\"") +
           to(listing.pages, "Last", !last, "") + "</nav>\n";
}

}  // namespace

std::optional<std::int64_t> Visit::store() const {
    return shop ? std::optional(shop->at("storeId").get<std::int64_t>()) : asked;
}

std::string Visit::to(std::string_view otherPath, Parameters parameters) const {
    parameters.emplace_back("store", numberOf(asked));
    return address(otherPath, parameters);
}

std::string Visit::toPage(std::int64_t page) const {
    Parameters parameters = filter;
    parameters.emplace_back("q", wanted.text);
    parameters.emplace_back("page", page == 1 ? "" : std::to_string(page));
    return to(path, std::move(parameters));
}

std::string framed(const Visit& visit, std::string_view title, const std::string& content) {
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<meta name=\"viewport\" "
           "content=\"width=device-width, initial-scale=1\">\n<meta name=\"color-scheme\" content=\"light "
           "dark\">\n<title>" +
           escaped(title) + " – " + escaped(shopName(visit)) + "</title>\n<style>" + std::string(styleSheet()) +
           "</style>\n</head>\n<body>\n<a class=\"skip\" href=\"#content\">Skip to the content</a>\n" + heading(visit) +
           "<div class=\"inner about\">" + storeLinks(visit) +
           (visit.url.empty() ? "" : "<span>Publish to <code>" + escaped(visit.url) + "/upload</code></span>\n") +
           addressList() + "</div>\n<main id=\"content\" class=\"inner\">\n" + content +
           "</main>\n<footer><div class=\"inner\">webstore-sandbox · times of imports are in "
           "UTC</div></footer>\n</body>\n</html>\n";
}

std::string errorPage(int status, std::string_view message) {
    Visit visit;
    return framed(visit, "Not here",
                  "<h1>" + escaped(message) + "</h1>\n<p class=\"soft\">Status " + std::to_string(status) + ". " +
                      link("/", "To the shop window") + "</p>\n");
}

std::string listPage(const Visit& visit, std::string_view title, const Listing& listing, const std::string& shown,
                     std::string_view hint, const std::string& above) {
    return framed(visit, title,
                  "<h1>" + escaped(title) + " " + amountOf(visit, listing) + "</h1>\n" + above +
                      (listing.total == 0 ? "<p class=\"hint\">" + nothing(visit, hint) + "</p>\n" : shown) +
                      pager(visit, listing));
}

std::string nothing(const Visit& visit, std::string_view hint) {
    return visit.wanted.text.empty() ? escaped(hint) : "Nothing found.";
}

std::string amountOf(const Visit& visit, const Listing& listing) {
    return "<small>" + std::to_string(listing.total) +
           (visit.wanted.text.empty() ? "" : " with “" + escaped(visit.wanted.text) + "”") + "</small>";
}

}  // namespace quill1xml::sandbox
