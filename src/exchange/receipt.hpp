// The server's answer to what was posted.
#pragma once

#include "quill1xml/error.hpp"
#include "quill1xml/ports.hpp"
#include "quill1xml/types.hpp"

#include <memory>

namespace quill1xml::exchange {

/// Raises the refusal of a receipt with the server's number, source and text. Returns when the number is 0.
/// Throws error 91 when the receipt has no Error or no Number, 13 or 6 when the number is none.
void checkReceipt(const ports::Element& receipt);

/// Whether the error is one that a receipt told: the server has not taken what was posted.
bool isRefusal(const Error& error);

/// Parses a reply that must be a receipt and checks it; returns its root element.
/// Throws "Response XML failed to load." when it does not parse, and as checkReceipt.
std::shared_ptr<ports::Element> readReceipt(ports::Xml& xml, ports::HttpReply reply);

}  // namespace quill1xml::exchange
