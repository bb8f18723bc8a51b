#include "page.hpp"

#include "escape.hpp"

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
p { margin: .3rem 0; color: var(--soft); }
a, code { color: var(--mark); }
table { width: 100%; border-collapse: collapse; background: var(--card); border: 1px solid var(--line); }
th, td { padding: .4rem .7rem; text-align: left; vertical-align: top; border-bottom: 1px solid var(--line); overflow-wrap: anywhere; }
th { color: var(--soft); font-weight: 600; font-size: .85rem; }
.number { text-align: right; font-variant-numeric: tabular-nums; }
</style>
</head>
<body>
<main>
<h1>Web store sandbox</h1>
)html";

std::string textOf(const Json& value) {
    return escaped(value.is_string() ? value.get<std::string>() : value.dump());
}

/// Characters that mean something in a query or in HTML become %XX.
std::string queryValue(std::string_view text) {
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
        rows += "<tr><td><a href=\"/records?kind=" + queryValue(kind) + "\">" + escaped(kind) +
                "</a></td><td class=\"number\">" + textOf(count) + "</td></tr>\n";
    return rows;
}

std::string section(std::string_view title, std::string_view headings, const std::string& rows,
                    const std::string& hint) {
    std::string out = "<h2>" + std::string(title) + "</h2>\n";
    if (rows.empty()) return out + "<p>" + hint + "</p>\n";
    return out + "<table>\n<tr>" + std::string(headings) + "</tr>\n" + rows + "</table>\n";
}

}  // namespace

std::string page(const Overview& overview) {
    const std::string uploadUrl = "<code>" + escaped(overview.url) + "/upload</code>";
    return std::string(head) + "<p>Publish store documents to " + uploadUrl + "</p>\n" +
           section("Imports",
                   "<th class=\"number\">Number</th><th>Time (UTC)</th><th class=\"number\">Store</th><th>User</th>"
                   "<th>Records</th>",
                   importRows(overview.imports), "Nothing has been published yet.") +
           section("Records", "<th>Kind</th><th class=\"number\">Count</th>", kindRows(overview.kinds),
                   "They appear here with the first import.") +
           "</main>\n</body>\n</html>\n";
}

}  // namespace quill1xml::sandbox
