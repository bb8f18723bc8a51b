#include "quill1xml/version.hpp"

namespace quill1xml {

std::string_view version() noexcept { return QUILL1XML_VERSION; }

}  // namespace quill1xml
