// A thin layer over SQLite: one connection, prepared statements, transactions.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quill1xml::sandbox {

/// Bytes to be bound as a blob. They are copied.
struct Blob {
    std::string_view bytes;
};

/// A prepared statement. It must not outlive its database.
class Statement {
public:
    /// Binds the values to the parameters in order, from the first; an empty optional is a null. Text must be UTF-8.
    template <class... Values>
    Statement& bind(const Values&... values) {
        int index = 0;
        (bindValue(++index, values), ...);
        return *this;
    }

    /// Goes to the next row. False when there is none.
    bool step();

    /// The bytes of a text or blob column of the current row, columns counted from 0; empty for a null.
    std::string text(int column) const;
    std::int64_t integer(int column) const;
    bool isNull(int column) const;

private:
    friend class Database;
    struct Finalise {
        void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
    };

    explicit Statement(sqlite3_stmt* statement) : handle_(statement) {}
    void bindValue(int index, std::string_view text);
    void bindValue(int index, std::int64_t number);
    void bindNull(int index);
    void bindValue(int index, Blob blob);
    template <class Value>
    void bindValue(int index, const std::optional<Value>& value) {
        if (value) {
            bindValue(index, *value);
        } else {
            bindNull(index);
        }
    }
    void check(int result) const;

    std::unique_ptr<sqlite3_stmt, Finalise> handle_;
};

/// One SQLite database. Every failure is a std::runtime_error with SQLite's message.
class Database {
public:
    /// Opens or creates a file; ":memory:" lives as long as the object.
    explicit Database(const std::string& file);

    Statement prepare(std::string_view sql);

    /// Runs statements that have neither parameters nor results.
    void execute(const char* sql);

    /// The row id of the last insertion.
    std::int64_t lastInserted() const { return sqlite3_last_insert_rowid(handle_.get()); }

private:
    struct Close {
        void operator()(sqlite3* handle) const noexcept { sqlite3_close(handle); }
    };
    std::unique_ptr<sqlite3, Close> handle_;
};

/// Undoes everything since its beginning unless commit is reached.
class Transaction {
public:
    explicit Transaction(Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    Database* database_;
};

}  // namespace quill1xml::sandbox
