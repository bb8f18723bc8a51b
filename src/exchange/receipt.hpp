// The server's answer to what was posted.
#pragma once

#include "platform/platform.hpp"
#include "quill1xml/types.hpp"

#include <memory>

namespace quill1xml::exchange {

/// Raises the refusal of a receipt with the server's number, source and text. Returns when the number is 0.
/// Throws error 91 when the receipt has no Error or no Number, 13 or 6 when the number is none.
void checkReceipt(const platform::Element& receipt);

/// Parses a reply that must be a receipt and checks it; returns its root element.
/// Throws "Response XML failed to load." when it does not parse, and as checkReceipt.
std::shared_ptr<platform::Element> readReceipt(platform::Xml& xml, const platform::HttpReply& reply);

/// The value of an attribute that must be there; error 91 otherwise.
std::u16string requiredAttribute(const platform::Element& element, Text name);

/// The first element at a path of a document; error 91 when there is none.
std::shared_ptr<platform::Element> requiredElement(const platform::Document& document, Text path);

}  // namespace quill1xml::exchange
