// The text of an HTTP reply.
#pragma once

#include "quill1xml/ports.hpp"

#include <string>

namespace quill1xml {

/// The body as text in UTF-8, without a byte-order mark. The mark decides on the encoding, then the charset of the
/// content type, then the XML declaration; UTF-8 is assumed otherwise and for a charset that is not known.
/// Bytes that are not valid UTF-8 and half a UTF-16 unit at the end become U+FFFD.
std::string replyText(ports::HttpReply reply);

}  // namespace quill1xml
