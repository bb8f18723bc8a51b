#include "storage.hpp"

#include <stdexcept>

namespace quill1xml::sandbox {
namespace {

constexpr int busyTimeoutMilliseconds = 5000;

/// Goes up when the schema changes.
constexpr int version = 1;

constexpr const char* schema = R"sql(
    CREATE TABLE imports (
        number INTEGER PRIMARY KEY,
        time TEXT NOT NULL,
        store_id INTEGER NOT NULL,
        user TEXT NOT NULL,
        store TEXT NOT NULL
    ) STRICT;
    CREATE TABLE records (
        id INTEGER PRIMARY KEY,
        import INTEGER REFERENCES imports (number),
        kind TEXT NOT NULL,
        key TEXT NOT NULL,
        attributes TEXT NOT NULL,
        children TEXT NOT NULL,
        xml TEXT NOT NULL
    ) STRICT;
    CREATE TABLE images (
        folder TEXT NOT NULL,
        name TEXT NOT NULL,
        thumbnail INTEGER NOT NULL,
        bytes BLOB NOT NULL,
        PRIMARY KEY (folder, name)
    ) STRICT;
    CREATE INDEX records_by_key ON records (kind, key);
    CREATE INDEX records_by_import ON records (import, kind);
)sql";

/// Bytes to be bound as a blob; they must outlive the statement.
struct Blob {
    const std::string& bytes;
};

template <class Value>
void bindValue(SQLite::Statement& statement, int index, const Value& value) {
    statement.bind(index, value);
}

void bindValue(SQLite::Statement& statement, int index, const Blob& blob) {
    statement.bindNoCopy(index, blob.bytes.data(), static_cast<int>(blob.bytes.size()));
}

/// An empty optional is a null.
template <class Value>
void bindValue(SQLite::Statement& statement, int index, const std::optional<Value>& value) {
    if (value) {
        statement.bind(index, *value);
    } else {
        statement.bind(index);
    }
}

/// A statement with the values for its parameters in order.
template <class... Values>
SQLite::Statement prepare(const SQLite::Database& database, const char* sql, const Values&... values) {
    SQLite::Statement statement(database, sql);
    int index = 0;
    (bindValue(statement, ++index, values), ...);
    return statement;
}

std::string text(SQLite::Statement& row, int column) { return row.getColumn(column).getString(); }
std::int64_t integer(SQLite::Statement& row, int column) { return row.getColumn(column).getInt64(); }

/// Takes the rows of a query of kind, key, import, attributes, children and xml.
Json recordsOf(SQLite::Statement rows) {
    Json list = Json::array();
    while (rows.executeStep())
        list.push_back({{"kind", text(rows, 0)},
                        {"key", text(rows, 1)},
                        {"import", rows.isColumnNull(2) ? Json() : Json(integer(rows, 2))},
                        {"attributes", Json::parse(text(rows, 3))},
                        {"children", Json::parse(text(rows, 4))},
                        {"xml", text(rows, 5)}});
    return list;
}

SQLite::Database open(const std::string& file) {
    return {file, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, busyTimeoutMilliseconds};
}

/// The declarations of all tables.
std::string tablesOf(const SQLite::Database& database) {
    std::string tables;
    SQLite::Statement rows =
        prepare(database, "SELECT sql FROM sqlite_schema WHERE type = 'table' AND sql IS NOT NULL ORDER BY name");
    while (rows.executeStep()) tables += text(rows, 0) + '\n';
    return tables;
}

/// Makes the tables in a new database. Throws when there are others, or one that a later version wrote.
void prepareTables(SQLite::Database& database) {
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    const int found = database.execAndGet("PRAGMA user_version").getInt();
    if (found > version) throw std::runtime_error("a newer version of the store has written it");
    if (tablesOf(database).empty()) database.exec(schema);
    SQLite::Database model = open(":memory:");
    model.exec(schema);
    if (tablesOf(database) != tablesOf(model)) throw std::runtime_error("its tables are not those of a store");
    if (found < version) database.exec("PRAGMA user_version = " + std::to_string(version));
    transaction.commit();
}

SQLite::Database openStore(const std::string& file) {
    try {
        SQLite::Database database = open(file);
        prepareTables(database);
        return database;
    } catch (const std::exception& error) {
        throw std::runtime_error("Database " + file + ": " + error.what());
    }
}

}  // namespace

Storage::Storage(const std::string& file) : database_(openStore(file)) {}

void Storage::insert(const StoreDocument& document, std::optional<std::int64_t> importNumber) {
    for (const Record& record : document.records)
        prepare(database_,
                "INSERT INTO records (import, kind, key, attributes, children, xml) VALUES (?, ?, ?, ?, ?, ?)",
                importNumber, record.kind, record.key, record.attributes.dump(), record.children.dump(), record.xml)
            .exec();
}

std::int64_t Storage::import(const StoreDocument& document) {
    const std::lock_guard lock(mutex_);
    SQLite::Transaction transaction(database_, SQLite::TransactionBehavior::IMMEDIATE);
    prepare(database_,
            "INSERT INTO imports (time, store_id, user, store) "
            "VALUES (strftime('%Y-%m-%dT%H:%M:%SZ', 'now'), ?, ?, ?)",
            document.storeId, document.user, document.store.dump())
        .exec();
    const std::int64_t number = database_.getLastInsertRowid();
    insert(document, number);
    transaction.commit();
    return number;
}

Json Storage::imports() {
    const std::lock_guard lock(mutex_);
    Json list = Json::array();
    SQLite::Statement rows =
        prepare(database_, "SELECT number, time, store_id, user, store FROM imports ORDER BY number");
    while (rows.executeStep()) {
        Json counts = Json::object();
        std::int64_t total = 0;
        SQLite::Statement kind =
            prepare(database_, "SELECT kind, count(*) FROM records WHERE import = ? GROUP BY kind ORDER BY min(id)",
                    integer(rows, 0));
        while (kind.executeStep()) {
            counts[text(kind, 0)] = integer(kind, 1);
            total += integer(kind, 1);
        }
        list.push_back({{"import", integer(rows, 0)},
                        {"time", text(rows, 1)},
                        {"storeId", integer(rows, 2)},
                        {"user", text(rows, 3)},
                        {"store", Json::parse(text(rows, 4))},
                        {"records", total},
                        {"kinds", counts}});
    }
    return list;
}

Json Storage::kinds() {
    const std::lock_guard lock(mutex_);
    Json counts = Json::object();
    SQLite::Statement rows = prepare(database_, "SELECT kind, count(*) FROM records GROUP BY kind ORDER BY min(id)");
    while (rows.executeStep()) counts[text(rows, 0)] = integer(rows, 1);
    return counts;
}

Json Storage::records(const std::optional<std::string>& kind, const std::optional<std::string>& key) {
    const std::lock_guard lock(mutex_);
    return recordsOf(prepare(database_,
                             "SELECT kind, key, import, attributes, children, xml FROM records "
                             "WHERE kind = coalesce(?1, kind) AND key = coalesce(?2, key) ORDER BY id",
                             kind, key));
}

Json Storage::current(const std::string& kind, const std::string& keyAttribute) {
    const std::lock_guard lock(mutex_);
    return recordsOf(prepare(database_,
                             "SELECT kind, key, import, attributes, children, xml FROM records "
                             "WHERE id IN (SELECT max(id) FROM records WHERE kind = ?1 "
                             "             GROUP BY coalesce(json_extract(attributes, '$.' || ?2), id)) "
                             "  AND json_extract(attributes, '$.Deleted') IS NOT '1' "
                             "ORDER BY id",
                             kind, keyAttribute));
}

std::size_t Storage::seed(const StoreDocument& document) {
    const std::lock_guard lock(mutex_);
    if (prepare(database_, "SELECT 1 FROM records WHERE import IS NULL").executeStep()) return 0;
    SQLite::Transaction transaction(database_, SQLite::TransactionBehavior::IMMEDIATE);
    insert(document, std::nullopt);
    transaction.commit();
    return document.records.size();
}

void Storage::applyImage(const ImageRequest& request) {
    const std::lock_guard lock(mutex_);
    if (request.deleted) {
        prepare(database_, "DELETE FROM images WHERE folder = ? AND name = ?", request.folder, request.name).exec();
    } else {
        prepare(database_, "INSERT OR REPLACE INTO images (folder, name, thumbnail, bytes) VALUES (?, ?, ?, ?)",
                request.folder, request.name, std::int64_t{request.thumbnail}, Blob{request.bytes})
            .exec();
    }
}

Json Storage::images() {
    const std::lock_guard lock(mutex_);
    Json list = Json::array();
    SQLite::Statement rows = prepare(
        database_,
        "SELECT folder, name, thumbnail, length(bytes), substr(bytes, 1, 16) FROM images ORDER BY folder, name");
    while (rows.executeStep())
        list.push_back({{"folder", text(rows, 0)},
                        {"name", text(rows, 1)},
                        {"type", imageType(text(rows, 4))},
                        {"size", integer(rows, 3)},
                        {"thumbnail", integer(rows, 2) != 0}});
    return list;
}

std::optional<std::string> Storage::image(const std::string& folder, const std::string& name) {
    const std::lock_guard lock(mutex_);
    SQLite::Statement row = prepare(database_, "SELECT bytes FROM images WHERE folder = ? AND name = ?", folder, name);
    return row.executeStep() ? std::optional(text(row, 0)) : std::nullopt;
}

}  // namespace quill1xml::sandbox
