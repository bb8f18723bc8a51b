#include "catalogue.hpp"

#include "html.hpp"

namespace quill1xml::sandbox {
namespace {

using Store = std::optional<std::int64_t>;

constexpr const char* topParent = "-1";

/// The attributes of the record that stands under a key; null when none does.
Json standingAttributes(const SQLite::Database& database, Store store, const std::string& kind,
                        const std::string& key) {
    SQLite::Statement row =
        prepare(database, "SELECT r.attributes" + standingRows("r", "?2") + " AND r.key = ?3", store, kind, key);
    return row.executeStep() ? Json::parse(text(row, 0)) : Json();
}

std::string imageNamed(const SQLite::Database& database, const std::string& name) {
    SQLite::Statement row = prepare(
        database, "SELECT folder FROM images WHERE name = ? ORDER BY folder = 'ProductImages' DESC, folder", name);
    return row.executeStep() ? imageAddress(text(row, 0), name) : std::string();
}

/// Its own picture comes before those of the image folders; pictures elsewhere on the net are not loaded.
std::string findPicture(const SQLite::Database& database, Store store, std::int64_t id, const Json& attributes) {
    if (attributes.contains("ThumbNailFile") || attributes.contains("LargeImageFile"))
        return recordAddress(id) + "/picture";
    for (const char* name : {"ThumbNail", "LargeImage"})
        if (attributes.contains(name))
            if (std::string found = imageNamed(database, attributes.at(name).get<std::string>()); !found.empty())
                return found;
    const std::string sku = attributes.value("SKU", "");
    SQLite::Statement rows =
        prepare(database,
                "SELECT json_extract(r.attributes, '$.FileName')" + standingRows("r", "'ProductImage'") +
                    " AND r.key >= ?2 || '|' AND r.key < ?2 || '}' ORDER BY r.rank, r.id LIMIT 20",
                store, sku);
    while (rows.executeStep())
        if (std::string found = imageNamed(database, text(rows, 0)); !found.empty()) return found;
    return {};
}

/// The keys of the products in the category ?4 and in those below it.
std::string productsOfCategory() {
    return "SELECT json_extract(link.attributes, '$.SKU')" + standingRows("link", "'ProductCategoryLink'") +
           " AND json_extract(link.attributes, '$.ProductCategoryID') IN (WITH RECURSIVE category (id, parent) AS "
           "MATERIALIZED (SELECT json_extract(c.attributes, '$.ProductCategoryID'), json_extract(c.attributes, "
           "'$.ParentID')" +
           standingRows("c", "'ProductCategory'") +
           "), below (id) AS (SELECT ?4 UNION SELECT category.id FROM below JOIN category ON category.parent = "
           "below.id) "
           "SELECT id FROM below)";
}

}  // namespace

std::optional<Json> shop(Storage& storage, Store store) {
    return storage.read([&](const SQLite::Database& database) -> std::optional<Json> {
        SQLite::Statement latest =
            prepare(database,
                    std::string("SELECT store_id FROM imports WHERE ") + (store ? "store_id = ?1" : "?1 IS NULL") +
                        " ORDER BY number DESC LIMIT 1",
                    store);
        if (!latest.executeStep()) return std::nullopt;
        Json found = {{"storeId", integer(latest, 0)}, {"attributes", Json::object()}, {"symbol", ""}};
        SQLite::Statement header = prepare(database,
                                           "SELECT store FROM imports WHERE store_id = ? AND "
                                           "json_extract(store, '$.Name') IS NOT NULL ORDER BY number DESC LIMIT 1",
                                           integer(latest, 0));
        if (header.executeStep()) found["attributes"] = Json::parse(text(header, 0));
        const std::string code = found["attributes"].value("CurrencyCode", "");
        const Json currency = standingAttributes(database, integer(latest, 0), "Currency", code);
        found["symbol"] = currency.is_null() ? code : currency.value("Symbol", code);
        return found;
    });
}

Json shops(Storage& storage) {
    return storage.read([](const SQLite::Database& database) {
        Json list = Json::array();
        SQLite::Statement rows =
            prepare(database, "SELECT store_id FROM imports GROUP BY store_id ORDER BY max(number) DESC LIMIT 20");
        while (rows.executeStep()) list.push_back(integer(rows, 0));
        return list;
    });
}

Json categoriesBelow(Storage& storage, Store store, const std::string& parent) {
    return storage.read([&](const SQLite::Database& database) {
        Json list = Json::array();
        SQLite::Statement rows = prepare(
            database,
            "SELECT json_extract(r.attributes, '$.ProductCategoryID'), json_extract(r.attributes, "
            "'$.Description')" +
                standingRows("r", "'ProductCategory'") +
                " AND coalesce(json_extract(r.attributes, '$.ParentID'), ?3) = ?2 ORDER BY r.rank, r.id LIMIT 200",
            store, parent.empty() ? std::string(topParent) : parent, std::string(topParent));
        while (rows.executeStep()) list.push_back({{"id", text(rows, 0)}, {"name", text(rows, 1)}});
        return list;
    });
}

std::optional<Json> category(Storage& storage, Store store, const std::string& id) {
    return storage.read([&](const SQLite::Database& database) -> std::optional<Json> {
        const Json attributes = standingAttributes(database, store, "ProductCategory", id);
        if (attributes.is_null()) return std::nullopt;
        const std::string parent = attributes.value("ParentID", topParent);
        const Json above = standingAttributes(database, store, "ProductCategory", parent);
        return Json{{"id", id},
                    {"name", attributes.value("Description", id)},
                    {"parent", above.is_null() ? "" : parent},
                    {"parentName", above.is_null() ? "" : above.value("Description", parent)}};
    });
}

Listing products(Storage& storage, Store store, const std::string& category, const Wanted& wanted) {
    return storage.read([&](const SQLite::Database& database) {
        Query query;
        query.table = "standing AS r";
        query.key = "r.id";
        query.columns = "r.id, " + shortAttributes("r");
        query.condition = stands("r", "?3") + " AND " + containsText("r", wanted.text) +
                          (category.empty() ? " AND ?4 = ''" : " AND r.key IN (" + productsOfCategory() + ")");
        query.order = "r.rank, r.id";
        Listing listing = listRows(
            database, query, wanted,
            [](SQLite::Statement& row) {
                return Json{{"id", integer(row, 0)}, {"attributes", Json::parse(text(row, 1))}};
            },
            store, patternFor(wanted.text), std::string("Product"), category);
        for (Json& product : listing.rows) {
            const Json attributes = product.at("attributes");
            product["picture"] = findPicture(database, store, product.at("id").get<std::int64_t>(), attributes);
            product["tax"] = standingAttributes(database, store, "Tax", attributes.value("TaxCode", ""));
        }
        return listing;
    });
}

Json taxOf(Storage& storage, Store store, const Json& attributes) {
    return storage.read([&](const SQLite::Database& database) {
        return standingAttributes(database, store, "Tax", attributes.value("TaxCode", ""));
    });
}

std::string pictureOf(Storage& storage, Store store, std::int64_t id, const Json& attributes) {
    return storage.read([&](const SQLite::Database& database) { return findPicture(database, store, id, attributes); });
}

}  // namespace quill1xml::sandbox
