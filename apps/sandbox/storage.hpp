// What arrives and what programs ask for: everything the store keeps, in one SQLite file (database.hpp).
#pragma once

#include "database.hpp"
#include "document.hpp"
#include "image.hpp"
#include "receipt.hpp"

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace quill1xml::sandbox {

/// How many refusals are kept.
inline constexpr std::int64_t mostRefusals = 1000;

/// May be used from several threads. Failures are SQLite::Exception and leave everything as it was.
class Storage {
public:
    /// Opens or creates the file; ":memory:" keeps nothing beyond the object. Throws what openStore throws.
    explicit Storage(const std::string& file);

    /// Keeps a document whole and returns its import number: 1 for the first, then without gaps.
    std::int64_t import(const StoreDocument& document);

    /// Keeps the records of a sample document, unless there is sample data already. Returns how many it kept. They
    /// belong to every store.
    std::size_t seed(const StoreDocument& document);

    /// Keeps why a post to an endpoint was refused, and the beginning of its body without passwords. Only the latest
    /// are kept.
    void noteRefusal(const std::string& endpoint, const Refusal& refusal, const std::string& body);

    /// [{"import", "time", "storeId", "user", "store", "records", "kinds": {kind: count}}], oldest first.
    Json imports();

    /// {kind: count}, in the order in which the kinds first came.
    Json kinds();

    /// [{"kind", "key", "import", "attributes", "children", "xml"}], oldest first, of one kind or key if given.
    Json records(const std::optional<std::string>& kind, const std::optional<std::string>& key);

    /// Calls with attributes and children of every record of a kind that stands in a store: of each key the latest,
    /// orders with their updates, and none that was deleted. Oldest first.
    void eachStanding(const std::string& kind, std::int64_t store,
                      const std::function<void(Json& attributes, const Json& children)>& use);

    /// Keeps an image in place of any former one of its name and folder, or takes it away if there is one.
    void applyImage(const ImageRequest& request);

    /// [{"folder", "name", "type", "size", "thumbnail"}], in the order of their names; the size in bytes.
    Json images();

    /// The bytes of an image; nothing when there is none.
    std::optional<std::string> image(const std::string& folder, const std::string& name);

    /// Lets a function read the database while nobody writes.
    template <class Use>
    auto read(Use use) {
        const std::lock_guard lock(mutex_);
        return use(std::as_const(database_));
    }

private:
    void insert(const StoreDocument& document, std::optional<std::int64_t> importNumber);
    void mergeUpdate(const Record& update, std::int64_t id, std::int64_t store);

    std::mutex mutex_;
    SQLite::Database database_;
};

/// The condition that a row of the view "standing", under an alias, is of a kind, an SQL expression, and stands in the
/// store ?1.
std::string stands(const std::string& alias, const std::string& kind);

/// The FROM and WHERE of all such rows.
std::string standingRows(const std::string& alias, const std::string& kind);

}  // namespace quill1xml::sandbox
