// The text of an HTTP reply.
#pragma once

#include "platform/platform.hpp"

#include <string>

namespace quill1xml::platform {

/// The body as text, without a byte-order mark. The mark decides on the encoding, then the charset of the content type,
/// then the XML declaration; UTF-8 is assumed otherwise and for a charset that is not known.
/// Bytes that are not valid UTF-8 and half a UTF-16 unit at the end become U+FFFD.
std::u16string replyText(const HttpReply& reply);

}  // namespace quill1xml::platform
