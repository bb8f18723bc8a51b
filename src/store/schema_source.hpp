// The schema that store documents are validated against, from its file or URL.
#pragma once

#include "quill1xml/ports.hpp"

#include <memory>

namespace quill1xml::store {

/// The schema at a location, a file name or URL. Throws error 5 for an empty one, the error of the file or exchange
/// when it cannot be read, and an application error that names the location when it is broken or refers to further
/// documents.
std::shared_ptr<ports::Schema> loadSchema(const ports::Environment& environment, Text location);

}  // namespace quill1xml::store
