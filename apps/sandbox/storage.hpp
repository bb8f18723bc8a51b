// Everything the store keeps, in one SQLite file.
//
//     imports  one row per accepted store document: number, time (UTC), store id, user, root attributes (JSON)
//     records  one row per record, in the order of arrival: import (null for sample data), kind, key,
//              attributes (JSON), children (JSON), xml
//     images   one row per image: folder, name, whether a thumbnail was asked for, bytes
#pragma once

#include "document.hpp"
#include "image.hpp"

#include <SQLiteCpp/SQLiteCpp.h>

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

namespace quill1xml::sandbox {

/// May be used from several threads. Failures are SQLite::Exception and leave everything as it was.
class Storage {
public:
    /// Opens or creates the file; ":memory:" keeps nothing beyond the object. Throws std::runtime_error that names the
    /// file when it is no database, has other tables or comes from a newer version.
    explicit Storage(const std::string& file);

    /// Keeps a document whole and returns its import number: 1 for the first, then without gaps.
    std::int64_t import(const StoreDocument& document);

    /// Keeps the records of a sample document, unless there is sample data already. Returns how many it kept.
    std::size_t seed(const StoreDocument& document);

    /// [{"import", "time", "storeId", "user", "store", "records", "kinds": {kind: count}}], oldest first.
    Json imports();

    /// {kind: count}, in the order in which the kinds first came.
    Json kinds();

    /// [{"kind", "key", "import", "attributes", "children", "xml"}], oldest first, of one kind or key if given.
    Json records(const std::optional<std::string>& kind, const std::optional<std::string>& key);

    /// As records, but of each value of the key attribute only the latest record, and none that is marked as deleted.
    Json current(const std::string& kind, const std::string& keyAttribute);

    /// Keeps an image in place of any former one of its name and folder, or takes it away if there is one.
    void applyImage(const ImageRequest& request);

    /// [{"folder", "name", "type", "size", "thumbnail"}], in the order of their names; the size in bytes.
    Json images();

    /// The bytes of an image; nothing when there is none.
    std::optional<std::string> image(const std::string& folder, const std::string& name);

private:
    void insert(const StoreDocument& document, std::optional<std::int64_t> importNumber);

    std::mutex mutex_;
    SQLite::Database database_;
};

}  // namespace quill1xml::sandbox
