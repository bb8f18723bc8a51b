// The store document that is about to be sent: loading and validation.
#pragma once

#include "store/state.hpp"

namespace quill1xml::store {

/// Where a document comes from.
enum class DocumentSource { memory, file };

/// Parses a document text, or a file by its name, with the schema of the store, and validates it.
/// Throws an Error with the parser's account when it does not load or is not valid.
void load(State& state, DocumentSource source, Text fileName, Text text);

/// Validates the loaded document. Throws when none is loaded or it is not valid.
void validate(State& state);

}  // namespace quill1xml::store
