// The store document that is about to be sent: loading and validation.
#pragma once

#include "store/state.hpp"

#include <span>

namespace quill1xml::store {

/// Parses a document in pieces of text that follow each other, with the schema of the store, and validates it.
/// Throws an Error with the parser's account when it does not load or is not valid. A packet among the pieces, the one
/// under way, is looked at where the parser gives up: it may lack its end.
void loadText(State& state, std::span<const Text> pieces, Text packet = {});

/// As loadText, from a file.
void loadFile(State& state, Text fileName);

/// Validates the loaded document. Throws when none is loaded or it is not valid.
void validate(State& state);

}  // namespace quill1xml::store
