// The SQLite file of the store and statements over it. Its tables and what they hold:
//
//     imports   one row per accepted store document: number, time (UTC), store id, user, root attributes (JSON)
//     records   one row per record as it came, in the order of arrival: import and store id (null for sample data),
//               kind, key, whether it hides the record from shoppers, its rank among others, attributes (JSON),
//               children (JSON), xml
//     merged    attributes and children of an order once the update in that row of records was added to it
//     refusals  the latest refused posts: number, time (UTC), endpoint, why, size and beginning of the body
//     images    one row per image: folder, name, whether a thumbnail was asked for, bytes
//
// The view "standing" has the columns of records, with what was merged in place of what came.
#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <cstdint>
#include <optional>
#include <string>

namespace quill1xml::sandbox {

/// Opens or creates the file. Throws std::runtime_error that names the file when it is no database, has other tables or
/// comes from another version.
SQLite::Database openStore(const std::string& file);

/// Bytes to be bound as a blob; they must outlive the statement.
struct Blob {
    const std::string& bytes;
};

template <class Value>
void bindValue(SQLite::Statement& statement, int index, const Value& value) {
    statement.bind(index, value);
}

inline void bindValue(SQLite::Statement& statement, int index, const Blob& blob) {
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

/// The values for the parameters of a statement, in order.
template <class... Values>
void bindAll(SQLite::Statement& statement, const Values&... values) {
    int index = 0;
    (bindValue(statement, ++index, values), ...);
}

template <class... Values>
SQLite::Statement prepare(const SQLite::Database& database, const std::string& sql, const Values&... values) {
    SQLite::Statement statement(database, sql);
    bindAll(statement, values...);
    return statement;
}

inline std::string text(SQLite::Statement& row, int column) { return row.getColumn(column).getString(); }
inline std::int64_t integer(SQLite::Statement& row, int column) { return row.getColumn(column).getInt64(); }

/// Nothing for a null.
inline std::optional<std::int64_t> perhapsInteger(SQLite::Statement& row, int column) {
    return row.isColumnNull(column) ? std::nullopt : std::optional(integer(row, column));
}

}  // namespace quill1xml::sandbox
