// One record, import or refusal with all there is to know of it.
#pragma once

#include "storage.hpp"

#include <cstdint>
#include <optional>

namespace quill1xml::sandbox {

/// {"id", "kind", "key", "import", "storeId", "attributes", "children", "xml"}, and for an order with updates "merged":
/// {"attributes", "children"}; "history": [{"id", "import", "time"}] of the records under its key, latest first, 50 at
/// most. Nothing when there is no such record.
std::optional<Json> recordDetail(Storage& storage, std::int64_t id);

/// The picture inside a record; nothing when it has none.
std::optional<std::string> recordPicture(Storage& storage, std::int64_t id);

/// {"import", "time", "storeId", "user", "store", "kinds": {kind: count}}.
std::optional<Json> importDetail(Storage& storage, std::int64_t number);

/// {"number", "time", "endpoint", "code", "source", "description", "size", "beginning"}.
std::optional<Json> refusalDetail(Storage& storage, std::int64_t number);

}  // namespace quill1xml::sandbox
