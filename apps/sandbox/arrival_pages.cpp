#include "arrival_pages.hpp"

#include "html.hpp"
#include "shelf.hpp"

#include <algorithm>
#include <vector>

namespace quill1xml::sandbox {
namespace {

std::string numbered(std::string_view path, const Json& number) {
    return number.is_null() ? "sample" : link(std::string(path) + '/' + number.dump(), number.dump());
}

/// Names and values, which are HTML already.
std::string facts(const std::vector<std::pair<std::string, std::string>>& rows) {
    std::string html = "<div class=\"card wide\"><table>\n<tbody>\n";
    for (const auto& [name, value] : rows)
        html.append("<tr><th scope=\"row\">").append(name).append("</th><td>").append(value).append("</td></tr>\n");
    return html + "</tbody>\n</table></div>\n";
}

std::string attributeTable(const Json& attributes) {
    if (attributes.empty()) return "<p class=\"hint\">It has none.</p>\n";
    std::vector<std::pair<std::string, std::string>> rows;
    for (const auto& [name, value] : attributes.items()) {
        const auto& text = value.get_ref<const std::string&>();
        rows.emplace_back(
            "<code>" + escaped(name) + "</code>",
            text.empty() ? "<span class=\"soft\">empty</span>" : "<div class=\"long\">" + escaped(text) + "</div>");
    }
    return facts(rows);
}

/// The children of one name, a column for every attribute that one of them has.
std::string childTable(const Json& children, const std::string& element) {
    std::vector<std::string> names;
    std::vector<const Json*> rows;
    for (const Json& child : children) {
        if (child.at("element") != element) continue;
        rows.push_back(&child);
        for (const auto& [name, value] : child.at("attributes").items())
            if (std::ranges::find(names, name) == names.end()) names.push_back(name);
    }
    std::vector<Table::Column> columns;
    columns.reserve(names.size());
    for (const std::string& name : names) columns.push_back({name});
    Table table(element, columns);
    for (const Json* row : rows) {
        std::vector<std::string> cells;
        cells.reserve(names.size());
        for (const std::string& name : names)
            cells.push_back("<div class=\"long\">" + escaped(attributeOf(row->at("attributes"), name.c_str())) +
                            "</div>");
        table.row(cells);
    }
    return "<h3>" + escaped(element) + " <small class=\"soft\">" + std::to_string(rows.size()) + "</small></h3>\n" +
           table.html();
}

std::string childTables(const Json& children) {
    std::vector<std::string> elements;
    for (const Json& child : children) {
        const auto& element = child.at("element").get_ref<const std::string&>();
        if (std::ranges::find(elements, element) == elements.end()) elements.push_back(element);
    }
    std::string html;
    for (const std::string& element : elements) html += childTable(children, element);
    return html;
}

/// The first attributes of a record, on a line.
std::string summaryOf(const Json& attributes) {
    constexpr int most = 5;
    std::string html;
    int count = 0;
    for (const auto& [name, value] : attributes.items()) {
        const auto& text = value.get_ref<const std::string&>();
        if (text.empty() || name.ends_with("File")) continue;
        if (++count > most) break;
        html += "<span class=\"soft\">" + escaped(name) + "</span> " + escaped(text) + " &ensp;";
    }
    return html;
}

std::string historyTable(const Json& record) {
    const Json& history = record.at("history");
    if (history.size() < 2) return {};
    Table table("History", {{"Record"}, {"Import"}, {"Time"}});
    for (const Json& row : history)
        table.row(
            {row.at("id") == record.at("id") ? row.at("id").dump() + " (this one)" : numbered("/records", row.at("id")),
             numbered("/imports", row.at("import")), escaped(shownTime(row.at("time").get_ref<const std::string&>()))});
    return "<h2>History <small>what arrived under this key</small></h2>\n" + table.html();
}

}  // namespace

std::string importTable(const Listing& imports) {
    Table table("Imports", {{"Import", true}, {"Time (UTC)"}, {"Store", true}, {"User"}, {"Records"}});
    for (const Json& import : imports.rows)
        table.row({numbered("/imports", import.at("import")),
                   escaped(shownTime(import.at("time").get_ref<const std::string&>())), import.at("storeId").dump(),
                   escaped(import.at("user").get_ref<const std::string&>()),
                   escaped(import.at("kinds").get_ref<const std::string&>())});
    return table.html();
}

std::string refusalTable(const Listing& refusals) {
    Table table("Refused", {{"No.", true}, {"Time (UTC)"}, {"Posted to"}, {"Error"}, {"Why"}});
    for (const Json& refusal : refusals.rows)
        table.row({numbered("/refusals", refusal.at("number")),
                   escaped(shownTime(refusal.at("time").get_ref<const std::string&>())),
                   "<code>" + escaped(refusal.at("endpoint").get_ref<const std::string&>()) + "</code>",
                   "<span class=\"badge bad\">" + refusal.at("code").dump() + " " +
                       escaped(refusal.at("source").get_ref<const std::string&>()) + "</span>",
                   escaped(refusal.at("description").get_ref<const std::string&>())});
    return table.html();
}

std::string importsPage(const Visit& visit, const Listing& imports) {
    return listPage(visit, "Imports", imports, importTable(imports), noImports);
}

std::string importPage(const Visit& visit, const Json& import) {
    const std::string number = import.at("import").dump();
    Table kinds("Records", {{"Kind"}, {"Records", true}});
    for (const auto& [kind, count] : import.at("kinds").items())
        kinds.row({link(visit.to("/records", {{"import", number}, {"kind", kind}}), kind), count.dump()});
    return framed(
        visit, "Import " + number,
        "<p class=\"crumbs\">" + link(visit.to("/imports"), "Imports") + "</p>\n<h1>Import " + number + "</h1>\n" +
            facts({{"Time (UTC)", escaped(shownTime(import.at("time").get_ref<const std::string&>()))},
                   {"Store", import.at("storeId").dump()},
                   {"User", escaped(import.at("user").get_ref<const std::string&>())}}) +
            "<h2>Records</h2>\n" + (kinds.empty() ? "<p class=\"hint\">It brought none.</p>\n" : kinds.html()) +
            "<h2>The store as it describes itself</h2>\n" + attributeTable(import.at("store")));
}

std::string refusalsPage(const Visit& visit, const Listing& refusals) {
    return listPage(visit, "Refused", refusals, refusalTable(refusals), noRefusals);
}

std::string refusalPage(const Visit& visit, const Json& refusal) {
    const auto shown = [&](const char* name) { return escaped(refusal.at(name).get_ref<const std::string&>()); };
    const std::string number = refusal.at("number").dump();
    const auto& beginning = refusal.at("beginning").get_ref<const std::string&>();
    return framed(visit, "Refused " + number,
                  "<p class=\"crumbs\">" + link(visit.to("/refusals"), "Refused") + "</p>\n<h1>" +
                      shown("description") + "</h1>\n" +
                      facts({{"Posted to", "<code>" + shown("endpoint") + "</code>"},
                             {"Time (UTC)", escaped(shownTime(refusal.at("time").get_ref<const std::string&>()))},
                             {"Error", refusal.at("code").dump()},
                             {"Source", shown("source")},
                             {"Size", refusal.at("size").dump() + " bytes"}}) +
                      "<h2>What came <small>its beginning, without passwords</small></h2>\n<div class=\"card\"><pre>" +
                      (beginning.empty() ? "(nothing)" : escaped(beginning)) + "</pre></div>\n");
}

std::string recordsPage(const Visit& visit, const Json& kinds, const Listing& records) {
    std::string chosen;
    for (const auto& [name, value] : visit.filter)
        if (name == "kind") chosen = value;
    std::string chips = std::string("<details class=\"kinds\"") + (chosen.empty() ? " open" : "") + "><summary>" +
                        std::to_string(kinds.size()) + " kinds</summary>\n<ul class=\"chips\">\n";
    for (const auto& [kind, count] : kinds.items())
        chips += "<li><a href=\"" + escaped(visit.to("/records", {{"kind", kind}})) + '"' +
                 (kind == chosen ? " aria-current=\"true\"" : "") + ">" + escaped(kind) + " <span class=\"count\">" +
                 count.dump() + "</span></a></li>\n";
    Table table("Records", {{"Record", true}, {"Kind"}, {"Key"}, {"Import", true}, {"Attributes"}});
    for (const Json& record : records.rows)
        table.row({numbered("/records", record.at("id")), escaped(record.at("kind").get_ref<const std::string&>()),
                   escaped(record.at("key").get_ref<const std::string&>()), numbered("/imports", record.at("import")),
                   summaryOf(record.at("attributes"))});
    return listPage(visit, chosen.empty() ? "Records" : chosen, records, table.html(), noImports,
                    kinds.empty() ? "" : chips + "</ul></details>\n");
}

std::string recordPage(const Visit& visit, const Json& record, const std::string& above) {
    const auto& kind = record.at("kind").get_ref<const std::string&>();
    const auto& key = record.at("key").get_ref<const std::string&>();
    const bool isMerged = record.contains("merged");
    const Json& shown = isMerged ? record.at("merged") : record;
    const std::string title = joined({kind, key}, " ");
    return framed(visit, title,
                  "<p class=\"crumbs\">" + link(visit.to("/records", {{"kind", kind}}), kind) + "</p>\n<h1>" +
                      escaped(title) + "</h1>\n<p class=\"soft\">Record " + record.at("id").dump() +
                      (record.at("import").is_null() ? ", sample data"
                                                     : ", store " + record.at("storeId").dump() + ", import " +
                                                           numbered("/imports", record.at("import"))) +
                      "</p>\n" + above + "<h2>Attributes" +
                      (isMerged ? " <small>as the order stands after this update</small>" : "") + "</h2>\n" +
                      attributeTable(shown.at("attributes")) + childTables(shown.at("children")) +
                      (isMerged ? "<h2>What the update brought</h2>\n" + attributeTable(record.at("attributes")) +
                                      childTables(record.at("children"))
                                : "") +
                      historyTable(record) +
                      "<h2>As it came</h2>\n<details class=\"card\"><summary>The element in XML</summary><pre>" +
                      escaped(record.at("xml").get_ref<const std::string&>()) + "</pre></details>\n");
}

}  // namespace quill1xml::sandbox
