#include "database.hpp"

#include <stdexcept>

namespace quill1xml::sandbox {
namespace {

constexpr int busyTimeoutMilliseconds = 5000;

/// Goes up when the schema changes.
constexpr int version = 2;

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
        store_id INTEGER,
        kind TEXT NOT NULL,
        key TEXT NOT NULL,
        hidden INTEGER NOT NULL,
        rank INTEGER NOT NULL,
        attributes TEXT NOT NULL,
        children TEXT NOT NULL,
        xml TEXT NOT NULL
    ) STRICT;
    CREATE TABLE merged (
        id INTEGER PRIMARY KEY REFERENCES records (id),
        attributes TEXT NOT NULL,
        children TEXT NOT NULL
    ) STRICT;
    CREATE TABLE refusals (
        number INTEGER PRIMARY KEY,
        time TEXT NOT NULL,
        endpoint TEXT NOT NULL,
        code INTEGER NOT NULL,
        source TEXT NOT NULL,
        description TEXT NOT NULL,
        size INTEGER NOT NULL,
        beginning TEXT NOT NULL
    ) STRICT;
    CREATE TABLE images (
        folder TEXT NOT NULL,
        name TEXT NOT NULL,
        thumbnail INTEGER NOT NULL,
        bytes BLOB NOT NULL,
        PRIMARY KEY (folder, name)
    ) STRICT;
    CREATE INDEX records_by_key ON records (kind, key, store_id);
    CREATE INDEX records_by_import ON records (import, kind);
    CREATE VIEW standing AS
        SELECT records.id, import, store_id, kind, key, hidden, rank,
               coalesce(merged.attributes, records.attributes) AS attributes,
               coalesce(merged.children, records.children) AS children
        FROM records LEFT JOIN merged ON merged.id = records.id;
)sql";

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

/// Makes the tables in a new database. Throws when there are others, or those of another version.
void prepareTables(SQLite::Database& database) {
    SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
    const int found = database.execAndGet("PRAGMA user_version").getInt();
    if (found > version) throw std::runtime_error("a newer version of the store has written it");
    if (found > 0 && found < version) throw std::runtime_error("an older version of the store has written it");
    if (tablesOf(database).empty()) database.exec(schema);
    SQLite::Database model = open(":memory:");
    model.exec(schema);
    if (tablesOf(database) != tablesOf(model)) throw std::runtime_error("its tables are not those of a store");
    if (found < version) database.exec("PRAGMA user_version = " + std::to_string(version));
    transaction.commit();
}

}  // namespace

SQLite::Database openStore(const std::string& file) {
    try {
        SQLite::Database database = open(file);
        prepareTables(database);
        return database;
    } catch (const std::exception& error) {
        throw std::runtime_error("Database " + file + ": " + error.what());
    }
}

}  // namespace quill1xml::sandbox
