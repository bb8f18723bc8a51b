// Everything the store keeps, in one SQLite file.
//
//     imports  one row per accepted store document: number, time (UTC), store id, user, root attributes (JSON)
//     records  one row per record, in the order of arrival: import (null for sample data), kind, key,
//              attributes (JSON), children (JSON), xml
#pragma once

#include "database.hpp"
#include "document.hpp"

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

namespace quill1xml::sandbox {

/// May be used from several threads. Failures are std::runtime_error and leave everything as it was.
class Storage {
public:
    /// Opens or creates the file; ":memory:" keeps nothing beyond the object.
    explicit Storage(const std::string& file);

    /// Keeps a document whole and returns its import number: 1 for the first, then without gaps.
    std::int64_t import(const StoreDocument& document);

    /// [{"import", "time", "storeId", "user", "store", "records", "kinds": {kind: count}}], oldest first.
    Json imports();

    /// {kind: count}, in the order in which the kinds first came.
    Json kinds();

    /// [{"kind", "key", "import", "attributes", "children", "xml"}], oldest first, of one kind or key if given.
    Json records(const std::optional<std::string>& kind, const std::optional<std::string>& key);

private:
    void insert(const StoreDocument& document, std::optional<std::int64_t> importNumber);

    std::mutex mutex_;
    Database database_;
};

}  // namespace quill1xml::sandbox
