#include "page.hpp"

#include "escape.hpp"

#include <cctype>
#include <initializer_list>
#include <string_view>

namespace quill1xml::sandbox {
namespace {

constexpr std::string_view head = R"html(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Web store sandbox</title>
<style>
:root { color-scheme: light dark; --ink: #1f2733; --soft: #667085; --line: #d9dee7; --ground: #f6f7f9; --card: #fff; --mark: #2457a6; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e6e9ef; --soft: #98a2b3; --line: #303846; --ground: #12161d; --card: #1a202a; --mark: #8ab4f8; }
}
body { margin: 0; background: var(--ground); color: var(--ink); font: 16px/1.5 system-ui, sans-serif; }
main { max-width: 60rem; margin: 0 auto; padding: 2rem 1rem; }
h1 { margin: 0; font-size: 1.6rem; }
h2 { margin: 2rem 0 .5rem; font-size: 1.1rem; }
h3 { margin: 1.2rem 0 .3rem; font-size: 1rem; }
p { margin: .3rem 0; color: var(--soft); }
a, code { color: var(--mark); }
table { width: 100%; border-collapse: collapse; background: var(--card); border: 1px solid var(--line); }
th, td { padding: .4rem .7rem; text-align: left; vertical-align: top; border-bottom: 1px solid var(--line); overflow-wrap: anywhere; }
table + table { margin-top: .5rem; }
th { color: var(--soft); font-weight: 600; font-size: .85rem; }
.number { text-align: right; font-variant-numeric: tabular-nums; }
.images { display: flex; flex-wrap: wrap; gap: 1rem; }
figure { margin: 0; width: 9rem; }
figure img { width: 9rem; height: 9rem; object-fit: contain; background: var(--card); border: 1px solid var(--line); }
figcaption { color: var(--soft); font-size: .85rem; overflow-wrap: anywhere; }
</style>
</head>
<body>
<main>
<h1>Web store sandbox</h1>
)html";

std::string textOf(const Json& value) { return escaped(value.is_string() ? value.get<std::string>() : value.dump()); }

/// The text in an address: all but plain letters and digits become %XX.
std::string inAddress(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string out;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) != 0) {
            out += c;
        } else {
            out += {'%', digits[byte >> 4], digits[byte & 15]};
        }
    }
    return out;
}

std::string importRows(const Json& imports) {
    std::string rows;
    for (auto import = imports.rbegin(); import != imports.rend(); ++import) {
        std::string kinds;
        for (const auto& [kind, count] : import->at("kinds").items())
            kinds += (kinds.empty() ? "" : ", ") + textOf(count) + ' ' + escaped(kind);
        rows += "<tr><td class=\"number\">" + textOf(import->at("import")) + "</td><td>" + textOf(import->at("time")) +
                "</td><td class=\"number\">" + textOf(import->at("storeId")) + "</td><td>" +
                textOf(import->at("user")) + "</td><td>" + kinds + "</td></tr>\n";
    }
    return rows;
}

std::string kindRows(const Json& kinds) {
    std::string rows;
    for (const auto& [kind, count] : kinds.items())
        rows += "<tr><td><a href=\"/records?kind=" + inAddress(kind) + "\">" + escaped(kind) +
                "</a></td><td class=\"number\">" + textOf(count) + "</td></tr>\n";
    return rows;
}

/// An attribute of a record or of one of its children, ready for HTML; empty when it has none of that name.
std::string shown(const Json& element, const char* attribute) {
    return escaped(element.at("attributes").value(attribute, std::string()));
}

/// Those of the texts that are not empty, with the separator between them.
std::string joined(std::initializer_list<std::string> texts, std::string_view separator) {
    std::string out;
    for (const std::string& text : texts) {
        if (text.empty()) continue;
        if (!out.empty()) out += separator;
        out += text;
    }
    return out;
}

std::string customerRows(const Json& customers) {
    std::string rows;
    for (const Json& customer : customers)
        rows += "<tr><td>" + shown(customer, "Name") + "</td><td>" + shown(customer, "EMailAddress") + "</td><td>" +
                shown(customer, "DebtorID") + "</td><td>" +
                joined({shown(customer, "AddressLine1"), shown(customer, "PostalCode"), shown(customer, "City"),
                        shown(customer, "CountryCode")},
                       ", ") +
                "</td></tr>\n";
    return rows;
}

/// A date and time of the format for people: a blank for the "T".
std::string shownDate(const Json& element, const char* attribute) {
    std::string text = shown(element, attribute);
    if (const std::size_t t = text.find('T'); t != std::string::npos) text[t] = ' ';
    return text;
}

struct Column {
    const char* heading;
    const char* attribute;
    bool isNumber = false;
};

/// A table of the children of that name; nothing when there are none.
std::string childTable(const Json& record, std::string_view element, std::initializer_list<Column> columns) {
    const auto cell = [](const char* tag, const Column& column, const std::string& text) {
        return std::string("<") + tag + (column.isNumber ? " class=\"number\">" : ">") + text + "</" + tag + '>';
    };
    std::string rows;
    for (const Json& child : record.at("children")) {
        if (child.at("element") != element) continue;
        rows += "<tr>";
        for (const Column& column : columns) rows += cell("td", column, shown(child, column.attribute));
        rows += "</tr>\n";
    }
    if (rows.empty()) return rows;
    std::string headings;
    for (const Column& column : columns) headings += cell("th", column, column.heading);
    return "<table>\n<tr>" + headings + "</tr>\n" + rows + "</table>\n";
}

std::string orderCards(const Json& orders) {
    std::string out;
    for (const Json& order : orders)
        out += "<h3>Order " + shown(order, "OrderNumber") + "</h3>\n<p>" +
               joined({shownDate(order, "OrderDate"), shown(order, "OrderStatus"), shown(order, "ShippingContactName"),
                       shown(order, "EMailAddress"), shown(order, "ShippingCity")},
                      " · ") +
               "</p>\n" +
               childTable(order, "OrderLineItem",
                          {{"Line", "LineNumber", true},
                           {"SKU", "SKU"},
                           {"Description", "Description"},
                           {"Quantity", "Quantity", true},
                           {"Price", "Price", true}}) +
               childTable(order, "UserDefinedFieldValue", {{"Field", "FieldName"}, {"Value", "FieldValue"}});
    return out;
}

std::string quotationCards(const Json& quotations) {
    std::string out;
    for (const Json& quotation : quotations)
        out += "<h3>Quotation " + shown(quotation, "QuoteNumber") + "</h3>\n<p>" +
               joined({shownDate(quotation, "QuoteDate"), shown(quotation, "ContactName"),
                       shown(quotation, "EMailAddress"), shown(quotation, "City")},
                      " · ") +
               "</p>\n" +
               childTable(quotation, "QuoteLineItem",
                          {{"SKU", "SKU"}, {"Description", "Description"}, {"Quantity", "Quantity", true}});
    return out;
}

std::string figures(const Json& images) {
    std::string out;
    for (const Json& image : images) {
        const auto& folder = image.at("folder").get_ref<const std::string&>();
        const auto& name = image.at("name").get_ref<const std::string&>();
        const std::string path = "/images/" + inAddress(folder) + '/' + inAddress(name);
        out.append("<figure><a href=\"").append(path).append("\"><img src=\"").append(path);
        out.append("\" alt=\"").append(escaped(name)).append(R"(" loading="lazy"></a><figcaption>)");
        out.append(escaped(folder)).append("/").append(escaped(name)).append("<br>");
        out.append(textOf(image.at("size"))).append(" bytes</figcaption></figure>\n");
    }
    return out.empty() ? out : "<div class=\"images\">\n" + out + "</div>\n";
}

/// A section of the page; the hint stands where there is nothing to show.
std::string section(std::string_view title, const std::string& content, std::string_view hint) {
    const std::string heading = "<h2>" + std::string(title) + "</h2>\n";
    return content.empty() ? heading + "<p>" + std::string(hint) + "</p>\n" : heading + content;
}

std::string table(std::string_view headings, const std::string& rows) {
    return rows.empty() ? rows : "<table>\n<tr>" + std::string(headings) + "</tr>\n" + rows + "</table>\n";
}

}  // namespace

std::string page(const Overview& overview) {
    return std::string(head) + "<p>Publish store documents to <code>" + escaped(overview.url) + "/upload</code></p>\n" +
           section("Imports",
                   table("<th class=\"number\">Number</th><th>Time (UTC)</th><th class=\"number\">Store</th>"
                         "<th>User</th><th>Records</th>",
                         importRows(overview.imports)),
                   "Nothing has been published yet.") +
           section("Records", table("<th>Kind</th><th class=\"number\">Count</th>", kindRows(overview.kinds)),
                   "They appear here with the first import.") +
           section(
               "Customers",
               table("<th>Name</th><th>E-mail</th><th>Debtor</th><th>Address</th>", customerRows(overview.customers)),
               "There are none. Post to /seed for a few.") +
           section("Orders", orderCards(overview.orders), "There are none.") +
           section("Quotations", quotationCards(overview.quotations), "There are none.") +
           section("Images", figures(overview.images), "None have been sent.") + "</main>\n</body>\n</html>\n";
}

}  // namespace quill1xml::sandbox
