// Lists for people: a page of rows at a time, cut out by the database. Long values come shortened, so that a page stays
// small whatever was published.
#pragma once

#include "storage.hpp"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

namespace quill1xml::sandbox {

inline constexpr std::int64_t pageSize = 50;

struct Wanted {
    std::string text;       ///< what a row must contain somewhere; empty for anything
    std::int64_t page = 1;  ///< stands for the last page when there are fewer
    std::int64_t size = pageSize;
};

struct Listing {
    Json rows = Json::array();
    std::int64_t total = 0;  ///< on all pages
    std::int64_t page = 1;
    std::int64_t pages = 1;
};

/// Which records as they came.
struct RecordFilter {
    std::optional<std::string> kind = std::nullopt;
    std::optional<std::string> key = std::nullopt;
    std::optional<std::int64_t> import = std::nullopt;
};

/// [{"id", "attributes", "lines", "goods"}] of the records of a kind that stand in a store, or of sample data when
/// there is no store yet, latest first. Orders and quotations have line items and the sum of their quantities times
/// prices.
Listing standing(Storage& storage, const std::string& kind, std::optional<std::int64_t> store, const Wanted& wanted);

/// [{"id", "kind", "key", "import", "attributes"}], latest first.
Listing records(Storage& storage, const RecordFilter& filter, const Wanted& wanted);

/// [{"import", "time", "storeId", "user", "kinds"}], latest first; kinds as a text.
Listing imports(Storage& storage, const Wanted& wanted);

/// [{"number", "time", "endpoint", "code", "source", "description", "size"}], latest first.
Listing refusals(Storage& storage, const Wanted& wanted);

/// [{"folder", "name", "size"}] by name.
Listing images(Storage& storage, const Wanted& wanted);

/// A list in SQL. All parameters must stand in its condition.
struct Query {
    std::string table;    ///< with its alias
    std::string key;      ///< what identifies a row
    std::string columns;  ///< only those of the page are worked out
    std::string condition;
    std::string order;
};

/// The wanted page of a list; the values are those of the parameters ?1, ?2 and so on.
template <class Read, class... Values>
Listing listRows(const SQLite::Database& database, const Query& query, const Wanted& wanted, Read read,
                 const Values&... values) {
    const std::string from = " FROM " + query.table + " WHERE ";
    Listing listing;
    SQLite::Statement count = prepare(database, "SELECT count(*)" + from + query.condition, values...);
    if (count.executeStep()) listing.total = integer(count, 0);
    listing.pages = std::max<std::int64_t>(1, (listing.total + wanted.size - 1) / wanted.size);
    listing.page = std::min(wanted.page, listing.pages);
    const std::string order = " ORDER BY " + query.order;
    const std::string ofPage =
        " LIMIT " + std::to_string(wanted.size) + " OFFSET " + std::to_string((listing.page - 1) * wanted.size);
    SQLite::Statement rows = prepare(database,
                                     "SELECT " + query.columns + from + query.key + " IN (SELECT " + query.key + from +
                                         query.condition + order + ofPage + ")" + order,
                                     values...);
    while (rows.executeStep()) listing.rows.push_back(read(rows));
    return listing;
}

/// The pattern for LIKE ... ESCAPE '\' that finds a text anywhere; empty for an empty text.
std::string patternFor(const std::string& text);

/// The condition that the record of an alias contains a text, whose pattern is the parameter ?2.
std::string containsText(const std::string& alias, const std::string& text);

/// The expression for the attributes of an alias with long values shortened.
std::string shortAttributes(const std::string& alias);

}  // namespace quill1xml::sandbox
