// The head that every packet but the first is sent with.
#pragma once

#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml::store {

/// The start tag of the root for a store's number.
std::u16string rootTag(Long storeId);

/// Adds an envelope element to the head.
void appendEnvelope(std::u16string& head, Text envelope);

/// The head as it was when the content of the first packet file was written; empty when the content does not begin with
/// the root of a store document.
std::u16string headFrom(Text firstPacket);

}  // namespace quill1xml::store
