#include "storage.hpp"

namespace quill1xml::sandbox {
namespace {

constexpr const char* schema = R"sql(
    CREATE TABLE IF NOT EXISTS imports (
        number INTEGER PRIMARY KEY,
        time TEXT NOT NULL,
        store_id INTEGER NOT NULL,
        user TEXT NOT NULL,
        store TEXT NOT NULL
    ) STRICT;
    CREATE TABLE IF NOT EXISTS records (
        id INTEGER PRIMARY KEY,
        import INTEGER REFERENCES imports (number),
        kind TEXT NOT NULL,
        key TEXT NOT NULL,
        attributes TEXT NOT NULL,
        children TEXT NOT NULL,
        xml TEXT NOT NULL
    ) STRICT;
    CREATE TABLE IF NOT EXISTS images (
        folder TEXT NOT NULL,
        name TEXT NOT NULL,
        thumbnail INTEGER NOT NULL,
        bytes BLOB NOT NULL,
        PRIMARY KEY (folder, name)
    ) STRICT;
    CREATE INDEX IF NOT EXISTS records_by_key ON records (kind, key);
    CREATE INDEX IF NOT EXISTS records_by_import ON records (import, kind);
)sql";

/// Takes the rows of a query of kind, key, import, attributes, children and xml.
Json recordsOf(Statement& rows) {
    Json list = Json::array();
    while (rows.step())
        list.push_back({{"kind", rows.text(0)},
                        {"key", rows.text(1)},
                        {"import", rows.isNull(2) ? Json() : Json(rows.integer(2))},
                        {"attributes", Json::parse(rows.text(3))},
                        {"children", Json::parse(rows.text(4))},
                        {"xml", rows.text(5)}});
    return list;
}

}  // namespace

Storage::Storage(const std::string& file) : database_(file) { database_.execute(schema); }

void Storage::insert(const StoreDocument& document, std::optional<std::int64_t> importNumber) {
    for (const Record& record : document.records)
        database_
            .prepare("INSERT INTO records (import, kind, key, attributes, children, xml) VALUES (?, ?, ?, ?, ?, ?)")
            .bind(importNumber, record.kind, record.key, record.attributes.dump(), record.children.dump(), record.xml)
            .step();
}

std::int64_t Storage::import(const StoreDocument& document) {
    const std::lock_guard lock(mutex_);
    Transaction transaction(database_);
    database_
        .prepare(
            "INSERT INTO imports (time, store_id, user, store) "
            "VALUES (strftime('%Y-%m-%dT%H:%M:%SZ', 'now'), ?, ?, ?)")
        .bind(document.storeId, document.user, document.store.dump())
        .step();
    const std::int64_t number = database_.lastInserted();
    insert(document, number);
    transaction.commit();
    return number;
}

Json Storage::imports() {
    const std::lock_guard lock(mutex_);
    Json list = Json::array();
    Statement rows = database_.prepare("SELECT number, time, store_id, user, store FROM imports ORDER BY number");
    while (rows.step()) {
        Json counts = Json::object();
        std::int64_t total = 0;
        Statement kind =
            database_.prepare("SELECT kind, count(*) FROM records WHERE import = ? GROUP BY kind ORDER BY min(id)");
        kind.bind(rows.integer(0));
        while (kind.step()) {
            counts[kind.text(0)] = kind.integer(1);
            total += kind.integer(1);
        }
        list.push_back({{"import", rows.integer(0)},
                        {"time", rows.text(1)},
                        {"storeId", rows.integer(2)},
                        {"user", rows.text(3)},
                        {"store", Json::parse(rows.text(4))},
                        {"records", total},
                        {"kinds", counts}});
    }
    return list;
}

Json Storage::kinds() {
    const std::lock_guard lock(mutex_);
    Json counts = Json::object();
    Statement rows = database_.prepare("SELECT kind, count(*) FROM records GROUP BY kind ORDER BY min(id)");
    while (rows.step()) counts[rows.text(0)] = rows.integer(1);
    return counts;
}

Json Storage::records(const std::optional<std::string>& kind, const std::optional<std::string>& key) {
    const std::lock_guard lock(mutex_);
    Statement rows = database_.prepare(
        "SELECT kind, key, import, attributes, children, xml FROM records "
        "WHERE kind = coalesce(?1, kind) AND key = coalesce(?2, key) ORDER BY id");
    rows.bind(kind, key);
    return recordsOf(rows);
}

Json Storage::current(const std::string& kind, const std::string& keyAttribute) {
    const std::lock_guard lock(mutex_);
    Statement rows = database_.prepare(
        "SELECT kind, key, import, attributes, children, xml FROM records "
        "WHERE id IN (SELECT max(id) FROM records WHERE kind = ?1 "
        "             GROUP BY coalesce(json_extract(attributes, '$.' || ?2), id)) "
        "  AND json_extract(attributes, '$.Deleted') IS NOT '1' "
        "ORDER BY id");
    rows.bind(kind, keyAttribute);
    return recordsOf(rows);
}

std::size_t Storage::seed(const StoreDocument& document) {
    const std::lock_guard lock(mutex_);
    if (database_.prepare("SELECT 1 FROM records WHERE import IS NULL").step()) return 0;
    Transaction transaction(database_);
    insert(document, std::nullopt);
    transaction.commit();
    return document.records.size();
}

void Storage::applyImage(const ImageRequest& request) {
    const std::lock_guard lock(mutex_);
    if (request.deleted) {
        database_.prepare("DELETE FROM images WHERE folder = ? AND name = ?").bind(request.folder, request.name).step();
    } else {
        database_.prepare("INSERT OR REPLACE INTO images (folder, name, thumbnail, bytes) VALUES (?, ?, ?, ?)")
            .bind(request.folder, request.name, std::int64_t{request.thumbnail}, Blob{request.bytes})
            .step();
    }
}

Json Storage::images() {
    const std::lock_guard lock(mutex_);
    Json list = Json::array();
    Statement rows = database_.prepare(
        "SELECT folder, name, thumbnail, length(bytes), substr(bytes, 1, 16) FROM images ORDER BY folder, name");
    while (rows.step())
        list.push_back({{"folder", rows.text(0)},
                        {"name", rows.text(1)},
                        {"type", imageType(rows.text(4))},
                        {"size", rows.integer(3)},
                        {"thumbnail", rows.integer(2) != 0}});
    return list;
}

std::optional<std::string> Storage::image(const std::string& folder, const std::string& name) {
    const std::lock_guard lock(mutex_);
    Statement row = database_.prepare("SELECT bytes FROM images WHERE folder = ? AND name = ?");
    row.bind(folder, name);
    return row.step() ? std::optional(row.text(0)) : std::nullopt;
}

}  // namespace quill1xml::sandbox
