#include "database.hpp"

#include <stdexcept>

namespace quill1xml::sandbox {
namespace {

constexpr int busyTimeoutMilliseconds = 5000;

[[noreturn]] void fail(sqlite3* handle) {
    throw std::runtime_error(std::string("Database: ") + sqlite3_errmsg(handle));
}

}  // namespace

Database::Database(const std::string& file) {
    sqlite3* handle = nullptr;
    const int result = sqlite3_open(file.c_str(), &handle);
    handle_.reset(handle);
    if (result != SQLITE_OK) fail(handle);
    sqlite3_busy_timeout(handle, busyTimeoutMilliseconds);
}

Statement Database::prepare(std::string_view sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(handle_.get(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr) != SQLITE_OK)
        fail(handle_.get());
    return Statement(statement);
}

void Database::execute(const char* sql) {
    if (sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) fail(handle_.get());
}

void Statement::check(int result) const {
    if (result != SQLITE_OK) fail(sqlite3_db_handle(handle_.get()));
}

void Statement::bindValue(int index, std::string_view text) {
    // A null pointer would bind NULL instead of the empty text.
    const char* data = text.empty() ? "" : text.data();
    check(sqlite3_bind_text64(handle_.get(), index, data, text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

void Statement::bindValue(int index, std::int64_t number) { check(sqlite3_bind_int64(handle_.get(), index, number)); }

void Statement::bindNull(int index) { check(sqlite3_bind_null(handle_.get(), index)); }

void Statement::bindValue(int index, Blob blob) {
    const char* data = blob.bytes.empty() ? "" : blob.bytes.data();
    check(sqlite3_bind_blob64(handle_.get(), index, data, blob.bytes.size(), SQLITE_TRANSIENT));
}

bool Statement::step() {
    const int result = sqlite3_step(handle_.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE) fail(sqlite3_db_handle(handle_.get()));
    return result == SQLITE_ROW;
}

std::string Statement::text(int column) const {
    const void* data = sqlite3_column_blob(handle_.get(), column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(handle_.get(), column));
    return size == 0 ? std::string() : std::string(static_cast<const char*>(data), size);
}

std::int64_t Statement::integer(int column) const { return sqlite3_column_int64(handle_.get(), column); }

bool Statement::isNull(int column) const { return sqlite3_column_type(handle_.get(), column) == SQLITE_NULL; }

Transaction::Transaction(Database& database) : database_(&database) { database.execute("BEGIN IMMEDIATE"); }

Transaction::~Transaction() {
    if (database_ == nullptr) return;
    try {
        database_->execute("ROLLBACK");
    } catch (const std::exception&) {
        // SQLite has already rolled back by itself; the failure that brought us here is the one to report.
    }
}

void Transaction::commit() {
    database_->execute("COMMIT");
    database_ = nullptr;
}

}  // namespace quill1xml::sandbox
