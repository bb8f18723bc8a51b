#include "listing.hpp"

namespace quill1xml::sandbox {
namespace {

/// The same over plain columns.
std::string anyContains(std::initializer_list<const char*> columns) {
    std::string condition = "(?1 = ''";
    for (const char* column : columns) condition += std::string(" OR ") + column + " LIKE ?1 ESCAPE '\\'";
    return condition + ")";
}

}  // namespace

std::string patternFor(const std::string& text) {
    if (text.empty()) return text;
    std::string pattern = "%";
    for (const char c : text) {
        if (c == '%' || c == '_' || c == '\\') pattern += '\\';
        pattern += c;
    }
    return pattern + '%';
}

std::string containsText(const std::string& alias) {
    // Files stand in attributes as base64, where almost any short text could be found.
    return "(?2 = '' OR EXISTS (SELECT 1 FROM json_each(" + alias +
           ".attributes) WHERE value LIKE ?2 ESCAPE '\\' AND key NOT LIKE '%File')"
           " OR EXISTS (SELECT 1 FROM json_tree(" +
           alias + ".children) WHERE atom LIKE ?2 ESCAPE '\\' AND key <> 'element' AND key NOT LIKE '%File'))";
}

std::string shortAttributes(const std::string& alias) {
    return "(SELECT json_group_object(key, substr(value, 1, 200)) FROM json_each(" + alias + ".attributes))";
}

Listing standing(Storage& storage, const std::string& kind, std::optional<std::int64_t> store, const Wanted& wanted) {
    const std::string lines =
        " FROM json_each(r.children) AS line WHERE json_extract(line.value, '$.element') LIKE '%LineItem')";
    const std::string columns = "r.id, " + shortAttributes("r") + ", (SELECT count(*)" + lines +
                                ", (SELECT sum(json_extract(line.value, '$.attributes.Quantity') * "
                                "json_extract(line.value, '$.attributes.Price'))" +
                                lines;
    const auto read = [](SQLite::Statement& row) {
        return Json{{"id", integer(row, 0)},
                    {"attributes", Json::parse(text(row, 1))},
                    {"lines", integer(row, 2)},
                    {"goods", row.isColumnNull(3) ? Json() : Json(row.getColumn(3).getDouble())}};
    };
    return storage.read([&](const SQLite::Database& database) {
        return listRows(database, columns, standingRows("r", "?3") + " AND " + containsText("r"), "r.id DESC", wanted,
                        read, store, patternFor(wanted.text), kind);
    });
}

Listing records(Storage& storage, const RecordFilter& filter, const Wanted& wanted) {
    // A comparison that is left out still mentions its parameter; an OR in its place would keep the index from use.
    const auto compare = [](bool given, const char* column, const char* parameter) {
        return std::string(" AND ") +
               (given ? std::string(column) + " = " + parameter : std::string(parameter) + " IS NULL");
    };
    const std::string from =
        " FROM records AS r WHERE " + containsText("r") + compare(filter.kind.has_value(), "r.kind", "?1") +
        compare(filter.key.has_value(), "r.key", "?3") + compare(filter.import.has_value(), "r.import", "?4");
    const auto read = [](SQLite::Statement& row) {
        const std::optional<std::int64_t> import = perhapsInteger(row, 3);
        return Json{{"id", integer(row, 0)},
                    {"kind", text(row, 1)},
                    {"key", text(row, 2)},
                    {"import", import ? Json(*import) : Json()},
                    {"attributes", Json::parse(text(row, 4))}};
    };
    return storage.read([&](const SQLite::Database& database) {
        return listRows(database, "r.id, r.kind, r.key, r.import, " + shortAttributes("r"), from, "r.id DESC", wanted,
                        read, filter.kind, patternFor(wanted.text), filter.key, filter.import);
    });
}

Listing imports(Storage& storage, const Wanted& wanted) {
    const auto read = [](SQLite::Statement& row) {
        return Json{{"import", integer(row, 0)},
                    {"time", text(row, 1)},
                    {"storeId", integer(row, 2)},
                    {"user", text(row, 3)},
                    {"kinds", text(row, 4)}};
    };
    return storage.read([&](const SQLite::Database& database) {
        return listRows(database,
                        "number, time, store_id, user, "
                        "(SELECT group_concat(many || ' ' || kind, ', ') FROM (SELECT kind, count(*) AS many "
                        "FROM records WHERE import = number GROUP BY kind ORDER BY min(id)))",
                        " FROM imports WHERE (" + anyContains({"number", "time", "store_id", "user"}) +
                            " OR EXISTS (SELECT 1 FROM records WHERE import = number AND kind LIKE ?1 ESCAPE '\\'))",
                        "number DESC", wanted, read, patternFor(wanted.text));
    });
}

Listing refusals(Storage& storage, const Wanted& wanted) {
    const auto read = [](SQLite::Statement& row) {
        return Json{{"number", integer(row, 0)}, {"time", text(row, 1)},   {"endpoint", text(row, 2)},
                    {"code", integer(row, 3)},   {"source", text(row, 4)}, {"description", text(row, 5)},
                    {"size", integer(row, 6)}};
    };
    return storage.read([&](const SQLite::Database& database) {
        return listRows(database, "number, time, endpoint, code, source, description, size",
                        " FROM refusals WHERE " +
                            anyContains({"number", "time", "endpoint", "code", "source", "description", "beginning"}),
                        "number DESC", wanted, read, patternFor(wanted.text));
    });
}

Listing images(Storage& storage, const Wanted& wanted) {
    const auto read = [](SQLite::Statement& row) {
        return Json{{"folder", text(row, 0)}, {"name", text(row, 1)}, {"size", integer(row, 2)}};
    };
    return storage.read([&](const SQLite::Database& database) {
        return listRows(database, "folder, name, length(bytes)",
                        " FROM images WHERE " + anyContains({"folder", "name"}), "folder, name", wanted, read,
                        patternFor(wanted.text));
    });
}

}  // namespace quill1xml::sandbox
