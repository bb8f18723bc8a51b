// Which record kinds Send posts, and in which order.
#pragma once

#include "quill1xml/types.hpp"

#include <string>
#include <vector>

namespace quill1xml::exchange {

/// The kinds as they stand in packet file names between "WebStore" and the packet number, the main files first.
/// A kind that is not among them is never sent by Send.
std::vector<std::u16string> sendOrder(Long storeId);

}  // namespace quill1xml::exchange
