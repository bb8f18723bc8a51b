// Which record kinds Send posts, and in which order.
#pragma once

#include "store/state.hpp"

#include <string>
#include <vector>

namespace quill1xml::exchange {

/// The kinds as they stand in packet file names between "WebStore" and the packet number, the main files first.
/// A kind that is not among them is never sent by Send.
std::vector<std::u16string> sendOrder(const store::State& state);

}  // namespace quill1xml::exchange
