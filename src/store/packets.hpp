// Packet files: UTF-16 text, records one after the other, in the folder of the store's packet files.
//
// A packet file is named WebStore, kind, packet number, ".tmp": WebStoreTax1.tmp, WebStoreOrder57_2.tmp. It starts with
// a byte-order mark; nothing stands between records. WebStore1.tmp begins with the root start tag and the envelope;
// every other packet file holds records only.
#pragma once

#include "store/state.hpp"

namespace quill1xml::store {

/// Appends text to the packet file of a kind ("WebStoreTax1"), or starts the file anew.
/// Sets the folder to "C:\" where none was set.
void appendToTempFile(State& state, Text text, Text kind, bool overwrite);

/// The packet file of a kind with its folder.
std::u16string tempFileName(const State& state, Text kind);

}  // namespace quill1xml::store
