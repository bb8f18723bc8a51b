#include "detail.hpp"

namespace quill1xml::sandbox {
namespace {

Json orNull(std::optional<std::int64_t> number) { return number ? Json(*number) : Json(); }

/// The records of the same kind and key, whichever store they are of.
Json historyOf(const SQLite::Database& database, const std::string& kind, const std::string& key) {
    Json history = Json::array();
    if (key.empty()) return history;
    SQLite::Statement rows = prepare(database,
                                     "SELECT records.id, import, time FROM records "
                                     "LEFT JOIN imports ON imports.number = import "
                                     "WHERE kind = ? AND key = ? ORDER BY records.id DESC LIMIT 50",
                                     kind, key);
    while (rows.executeStep())
        history.push_back(
            {{"id", integer(rows, 0)}, {"import", orNull(perhapsInteger(rows, 1))}, {"time", text(rows, 2)}});
    return history;
}

}  // namespace

std::optional<Json> recordDetail(Storage& storage, std::int64_t id) {
    return storage.read([id](const SQLite::Database& database) -> std::optional<Json> {
        SQLite::Statement row =
            prepare(database,
                    "SELECT id, kind, key, import, store_id, attributes, children, xml FROM records WHERE id = ?", id);
        if (!row.executeStep()) return std::nullopt;
        Json record = {{"id", integer(row, 0)},
                       {"kind", text(row, 1)},
                       {"key", text(row, 2)},
                       {"import", orNull(perhapsInteger(row, 3))},
                       {"storeId", orNull(perhapsInteger(row, 4))},
                       {"attributes", Json::parse(text(row, 5))},
                       {"children", Json::parse(text(row, 6))},
                       {"xml", text(row, 7)},
                       {"history", historyOf(database, text(row, 1), text(row, 2))}};
        SQLite::Statement merged = prepare(database, "SELECT attributes, children FROM merged WHERE id = ?", id);
        if (merged.executeStep())
            record["merged"] = {{"attributes", Json::parse(text(merged, 0))},
                                {"children", Json::parse(text(merged, 1))}};
        return record;
    });
}

std::optional<std::string> recordPicture(Storage& storage, std::int64_t id) {
    return storage.read([id](const SQLite::Database& database) -> std::optional<std::string> {
        SQLite::Statement row = prepare(database,
                                        "SELECT coalesce(json_extract(attributes, '$.LargeImageFile'), "
                                        "json_extract(attributes, '$.ThumbNailFile')) FROM records WHERE id = ?",
                                        id);
        if (!row.executeStep() || row.isColumnNull(0)) return std::nullopt;
        return decodeBase64(text(row, 0));
    });
}

std::optional<Json> importDetail(Storage& storage, std::int64_t number) {
    return storage.read([number](const SQLite::Database& database) -> std::optional<Json> {
        SQLite::Statement row =
            prepare(database, "SELECT number, time, store_id, user, store FROM imports WHERE number = ?", number);
        if (!row.executeStep()) return std::nullopt;
        Json kinds = Json::object();
        SQLite::Statement counts = prepare(
            database, "SELECT kind, count(*) FROM records WHERE import = ? GROUP BY kind ORDER BY min(id)", number);
        while (counts.executeStep()) kinds[text(counts, 0)] = integer(counts, 1);
        return Json{{"import", integer(row, 0)},          {"time", text(row, 1)},
                    {"storeId", integer(row, 2)},         {"user", text(row, 3)},
                    {"store", Json::parse(text(row, 4))}, {"kinds", kinds}};
    });
}

std::optional<Json> refusalDetail(Storage& storage, std::int64_t number) {
    return storage.read([number](const SQLite::Database& database) -> std::optional<Json> {
        SQLite::Statement row = prepare(
            database,
            "SELECT number, time, endpoint, code, source, description, size, beginning FROM refusals WHERE number = ?",
            number);
        if (!row.executeStep()) return std::nullopt;
        return Json{{"number", integer(row, 0)}, {"time", text(row, 1)},     {"endpoint", text(row, 2)},
                    {"code", integer(row, 3)},   {"source", text(row, 4)},   {"description", text(row, 5)},
                    {"size", integer(row, 6)},   {"beginning", text(row, 7)}};
    });
}

}  // namespace quill1xml::sandbox
