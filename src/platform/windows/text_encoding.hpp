// XML text as bytes of an encoding. Some versions of MSXML save in UTF-8 whatever a document declares.
#pragma once

#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml::platform {

/// The text in an encoding by its name in XML; an empty name means UTF-8. Knows UTF-8, UTF-16 (with a byte-order mark),
/// US-ASCII, the single-byte encodings ISO-8859 and Windows-125x, and, as far as the system has their code pages,
/// Shift_JIS, GB2312, Big5 and EUC-KR; a character that one of these lacks becomes a character reference. Throws error
/// 440 for other names.
std::string encodeXml(Text text, Text encoding);

}  // namespace quill1xml::platform
