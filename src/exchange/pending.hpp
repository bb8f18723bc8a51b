// The packet files that a Send would find, and those it would pass over.
#pragma once

#include "quill1xml/store.hpp"
#include "store/state.hpp"

namespace quill1xml::exchange {

/// The packet file of a kind and number, by its bare name; empty when there is none.
std::u16string findPacket(const store::State& state, Text kind, Integer packet);

/// The packet files of a kind that SendTempFile would find, in their order.
std::vector<std::u16string> packetsOf(const store::State& state, Text kind);

PendingPackets pendingPackets(const store::State& state);

}  // namespace quill1xml::exchange
