// Packet files: UTF-16 text, records one after the other, in the folder of the store's packet files.
//
// A packet file is named WebStore, kind, packet number, ".tmp": WebStoreTax1.tmp, WebStoreOrder57_2.tmp. It starts with
// a byte-order mark; nothing stands between records. WebStore1.tmp begins with the root start tag and the envelope;
// every other packet file holds records only.
#pragma once

#include "store/state.hpp"

#include <cstdint>
#include <optional>

namespace quill1xml::store {

/// Which packet file. The kind of the main files is empty.
struct Packet {
    Text kind{};
    std::optional<Long> storeId{};  ///< where there is one, the kind goes on with it and "_"
    std::int64_t number = 1;
};

/// The one that begins with the root start tag.
inline constexpr Packet firstPacket{};

/// The packet's file name without folder: "WebStoreOrder57_2.tmp".
std::u16string fileName(const Packet& packet);

/// The packet's file name with its folder.
std::u16string path(const State& state, const Packet& packet);

/// A kind as SendTempFile takes it: "Order57_".
std::u16string kindText(const Packet& packet);

/// The packet files whose names begin with a text, "WebStore" by default, in rising order and without folder.
std::vector<std::u16string> packetFiles(const State& state, Text beginning = {});

/// Appends text to a packet file, or starts it anew. Sets the folder to "C:\" where none was set.
void append(State& state, const Packet& packet, Text text);
void startAnew(State& state, const Packet& packet, Text text);

/// The folder where none was set.
void useDefaultFolder(State& state);

}  // namespace quill1xml::store
