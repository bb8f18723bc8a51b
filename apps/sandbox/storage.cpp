#include "storage.hpp"

#include "order_update.hpp"

#include <charconv>
#include <limits>

namespace quill1xml::sandbox {
namespace {

constexpr std::size_t mostOfBody = 16384;
constexpr const char* now = "strftime('%Y-%m-%dT%H:%M:%SZ', 'now')";

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

bool isHidden(const Record& record) {
    return record.attributes.value("Deleted", "") == "1" || record.attributes.value("ShowProduct", "") == "0";
}

/// Products are ranked under another name than all else; what has no rank comes last.
std::int64_t rankOf(const Record& record) {
    std::int64_t rank = std::numeric_limits<std::int64_t>::max();
    for (const char* name : {"Rank", "Ranking"}) {
        const std::string number = record.attributes.value(name, "");
        std::from_chars(number.data(), number.data() + number.size(), rank);
    }
    return rank;
}

/// The beginning of a document with an ellipsis for every password: those of senders open this very store.
std::string beginningOf(const std::string& body) {
    constexpr std::string_view name = "Password";
    std::string out = body.substr(0, mostOfBody);
    for (std::size_t at = out.find(name); at != std::string::npos; at = out.find(name, at)) {
        at += name.size();
        const std::size_t equals = out.find_first_not_of(" \t\r\n", at);
        if (equals == std::string::npos || out[equals] != '=') continue;
        const std::size_t open = out.find_first_not_of(" \t\r\n", equals + 1);
        if (open == std::string::npos || (out[open] != '"' && out[open] != '\'')) continue;
        const std::size_t close = std::min(out.find(out[open], open + 1), out.size());
        out.replace(open + 1, close - open - 1, "…");
        at = open;
    }
    return out;
}

}  // namespace

std::string stands(const std::string& alias, const std::string& kind) {
    const auto ofStore = [](const std::string& name) {
        return "(" + name + ".store_id = ?1 OR " + name + ".store_id IS NULL)";
    };
    return alias + ".kind = " + kind + " AND " + alias + ".hidden = 0 AND " + ofStore(alias) + " AND (" + alias +
           ".key = '' OR NOT EXISTS (SELECT 1 FROM records AS newer WHERE newer.kind = " + alias +
           ".kind AND newer.key = " + alias + ".key AND newer.id > " + alias + ".id AND " + ofStore("newer") + "))";
}

std::string standingRows(const std::string& alias, const std::string& kind) {
    return " FROM standing AS " + alias + " WHERE " + stands(alias, kind);
}

Storage::Storage(const std::string& file) : database_(openStore(file)) {}

void Storage::insert(const StoreDocument& document, std::optional<std::int64_t> importNumber) {
    const auto store = importNumber ? std::optional(document.storeId) : std::nullopt;
    SQLite::Statement statement(
        database_,
        "INSERT INTO records (import, store_id, kind, key, hidden, rank, attributes, children, xml) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");
    for (const Record& record : document.records) {
        bindAll(statement, importNumber, store, record.kind, record.key, std::int64_t{isHidden(record)}, rankOf(record),
                record.attributes.dump(), record.children.dump(), record.xml);
        statement.exec();
        statement.reset();
        if (store && isOrderUpdate(record)) mergeUpdate(record, database_.getLastInsertRowid(), *store);
    }
}

void Storage::mergeUpdate(const Record& update, std::int64_t id, std::int64_t store) {
    SQLite::Statement former = prepare(database_,
                                       "SELECT attributes, children, hidden FROM standing "
                                       "WHERE kind = ? AND key = ? AND id < ? AND (store_id = ? OR store_id IS NULL) "
                                       "ORDER BY id DESC LIMIT 1",
                                       update.kind, update.key, id, store);
    if (!former.executeStep() || integer(former, 2) != 0) return;
    Json attributes = Json::parse(text(former, 0));
    Json children = Json::parse(text(former, 1));
    addUpdate(attributes, children, update);
    prepare(database_, "INSERT INTO merged (id, attributes, children) VALUES (?, ?, ?)", id, attributes.dump(),
            children.dump())
        .exec();
}

std::int64_t Storage::import(const StoreDocument& document) {
    const std::lock_guard lock(mutex_);
    SQLite::Transaction transaction(database_, SQLite::TransactionBehavior::IMMEDIATE);
    prepare(database_, std::string("INSERT INTO imports (time, store_id, user, store) VALUES (") + now + ", ?, ?, ?)",
            document.storeId, document.user, document.store.dump())
        .exec();
    const std::int64_t number = database_.getLastInsertRowid();
    insert(document, number);
    transaction.commit();
    return number;
}

std::size_t Storage::seed(const StoreDocument& document) {
    const std::lock_guard lock(mutex_);
    if (prepare(database_, "SELECT 1 FROM records WHERE import IS NULL").executeStep()) return 0;
    SQLite::Transaction transaction(database_, SQLite::TransactionBehavior::IMMEDIATE);
    insert(document, std::nullopt);
    transaction.commit();
    return document.records.size();
}

void Storage::noteRefusal(const std::string& endpoint, const Refusal& refusal, const std::string& body) {
    const std::lock_guard lock(mutex_);
    SQLite::Transaction transaction(database_, SQLite::TransactionBehavior::IMMEDIATE);
    prepare(database_,
            std::string("INSERT INTO refusals (time, endpoint, code, source, description, size, beginning) VALUES (") +
                now + ", ?, ?, ?, ?, ?, ?)",
            endpoint, std::int64_t{refusal.number()}, refusal.source(), std::string(refusal.what()),
            static_cast<std::int64_t>(body.size()), beginningOf(body))
        .exec();
    prepare(database_, "DELETE FROM refusals WHERE number <= ?", database_.getLastInsertRowid() - mostRefusals).exec();
    transaction.commit();
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

void Storage::eachStanding(const std::string& kind, std::int64_t store,
                           const std::function<void(Json& attributes, const Json& children)>& use) {
    const std::lock_guard lock(mutex_);
    SQLite::Statement rows =
        prepare(database_, "SELECT attributes, children" + standingRows("r", "?2") + " ORDER BY id", store, kind);
    while (rows.executeStep()) {
        Json attributes = Json::parse(text(rows, 0));
        use(attributes, Json::parse(text(rows, 1)));
    }
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
