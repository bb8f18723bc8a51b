// The encoding that an XML document declares.
#pragma once

#include <string_view>

namespace quill1xml {

/// The encoding in the XML declaration at the very start of a document in an encoding that extends ASCII; empty when
/// it declares none. The result is part of the document.
std::string_view declaredEncoding(std::string_view document);

}  // namespace quill1xml
