// Changes of an order's state: sparse Order records that add to the order that the store holds.
#pragma once

#include "document.hpp"

namespace quill1xml::sandbox {

/// Whether a record says nothing of an order but its state. Any other Order record is a whole order.
bool isOrderUpdate(const Record& record);

/// Adds an update to an order. Its attributes take the place of those there were; a line or field value that the order
/// has already is replaced, any other one is appended.
void addUpdate(Json& attributes, Json& children, const Record& update);

}  // namespace quill1xml::sandbox
