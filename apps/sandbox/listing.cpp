#include "listing.hpp"

namespace quill1xml::sandbox {
namespace {

/// The condition that one of the columns contains what the parameter ?1 is the pattern for, or that it is empty.
std::string anyContains(std::initializer_list<const char*> columns) {
    std::string condition = "(?1 = ''";
    for (const char* column : columns) condition += std::string(" OR ") + column + " LIKE ?1 ESCAPE '\\'";
    return condition + ")";
}

/// A comparison that is left out still mentions its parameter; an OR in its place would keep the index from use.
std::string compare(bool given, const char* column, const char* parameter) {
    return " AND " + (given ? std::string(column) + " = " + parameter : std::string(parameter) + " IS NULL");
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

std::string containsText(const std::string& alias, const std::string& text) {
    if (text.empty()) return "?2 = ''";
    const auto like = [](const std::string& value) { return value + " LIKE ?2 ESCAPE '\\'"; };
    // A text that JSON does not escape stands in it as it is: that rules out most records without taking them apart.
    const bool isPlain = std::ranges::none_of(
        text, [](char c) { return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
    const auto mayHave = [&](const std::string& column) { return isPlain ? like(column) + " AND " : std::string(); };
    // Files stand in attributes as base64, where almost any short text could be found.
    return "(" + mayHave(alias + ".attributes") + "EXISTS (SELECT 1 FROM json_each(" + alias + ".attributes) WHERE " +
           like("value") + " AND key NOT LIKE '%File') OR " + mayHave(alias + ".children") +
           "EXISTS (SELECT 1 FROM json_tree(" + alias + ".children) WHERE " + like("atom") +
           " AND key <> 'element' AND key NOT LIKE '%File'))";
}

std::string shortAttributes(const std::string& alias) {
    return "(SELECT json_group_object(key, substr(value, 1, 200)) FROM json_each(" + alias + ".attributes))";
}

Listing standing(Storage& storage, const std::string& kind, std::optional<std::int64_t> store, const Wanted& wanted) {
    const std::string lines =
        " FROM json_each(r.children) AS line WHERE json_extract(line.value, '$.element') LIKE '%LineItem')";
    Query query;
    query.table = "standing AS r";
    query.key = "r.id";
    query.columns = "r.id, " + shortAttributes("r") + ", (SELECT count(*)" + lines +
                    ", (SELECT sum(json_extract(line.value, '$.attributes.Quantity') * "
                    "json_extract(line.value, '$.attributes.Price'))" +
                    lines;
    query.condition = stands("r", "?3") + " AND " + containsText("r", wanted.text);
    query.order = "r.id DESC";
    const auto read = [](SQLite::Statement& row) {
        return Json{{"id", integer(row, 0)},
                    {"attributes", Json::parse(text(row, 1))},
                    {"lines", integer(row, 2)},
                    {"goods", row.isColumnNull(3) ? Json() : Json(row.getColumn(3).getDouble())}};
    };
    return storage.read([&](const SQLite::Database& database) {
        return listRows(database, query, wanted, read, store, patternFor(wanted.text), kind);
    });
}

Listing records(Storage& storage, const RecordFilter& filter, const Wanted& wanted) {
    Query query;
    query.table = "records AS r";
    query.key = "r.id";
    query.columns = "r.id, r.kind, r.key, r.import, " + shortAttributes("r");
    query.condition = containsText("r", wanted.text) + compare(filter.kind.has_value(), "r.kind", "?1") +
                      compare(filter.key.has_value(), "r.key", "?3") +
                      compare(filter.import.has_value(), "r.import", "?4");
    query.order = "r.id DESC";
    const auto read = [](SQLite::Statement& row) {
        const std::optional<std::int64_t> import = perhapsInteger(row, 3);
        return Json{{"id", integer(row, 0)},
                    {"kind", text(row, 1)},
                    {"key", text(row, 2)},
                    {"import", import ? Json(*import) : Json()},
                    {"attributes", Json::parse(text(row, 4))}};
    };
    return storage.read([&](const SQLite::Database& database) {
        return listRows(database, query, wanted, read, filter.kind, patternFor(wanted.text), filter.key, filter.import);
    });
}

Listing imports(Storage& storage, const Wanted& wanted) {
    Query query;
    query.table = "imports";
    query.key = "number";
    query.columns =
        "number, time, store_id, user, (SELECT group_concat(many || ' ' || kind, ', ') FROM (SELECT kind, "
        "count(*) AS many FROM records WHERE import = number GROUP BY kind ORDER BY min(id)))";
    query.condition = "(" + anyContains({"number", "time", "store_id", "user"}) +
                      " OR EXISTS (SELECT 1 FROM records WHERE import = number AND kind LIKE ?1 ESCAPE '\\'))";
    query.order = "number DESC";
    const auto read = [](SQLite::Statement& row) {
        return Json{{"import", integer(row, 0)},
                    {"time", text(row, 1)},
                    {"storeId", integer(row, 2)},
                    {"user", text(row, 3)},
                    {"kinds", text(row, 4)}};
    };
    return storage.read([&](const SQLite::Database& database) {
        return listRows(database, query, wanted, read, patternFor(wanted.text));
    });
}

Listing refusals(Storage& storage, const Wanted& wanted) {
    Query query;
    query.table = "refusals";
    query.key = "number";
    query.columns = "number, time, endpoint, code, source, description, size";
    query.condition = anyContains({"number", "time", "endpoint", "code", "source", "description", "beginning"});
    query.order = "number DESC";
    const auto read = [](SQLite::Statement& row) {
        return Json{{"number", integer(row, 0)}, {"time", text(row, 1)},   {"endpoint", text(row, 2)},
                    {"code", integer(row, 3)},   {"source", text(row, 4)}, {"description", text(row, 5)},
                    {"size", integer(row, 6)}};
    };
    return storage.read([&](const SQLite::Database& database) {
        return listRows(database, query, wanted, read, patternFor(wanted.text));
    });
}

Listing images(Storage& storage, const Wanted& wanted) {
    Query query;
    query.table = "images";
    query.key = "images.rowid";
    query.columns = "folder, name, length(bytes)";
    query.condition = anyContains({"folder", "name"});
    query.order = "folder, name";
    const auto read = [](SQLite::Statement& row) {
        return Json{{"folder", text(row, 0)}, {"name", text(row, 1)}, {"size", integer(row, 2)}};
    };
    return storage.read([&](const SQLite::Database& database) {
        return listRows(database, query, wanted, read, patternFor(wanted.text));
    });
}

}  // namespace quill1xml::sandbox
