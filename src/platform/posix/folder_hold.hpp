// One job at a time in a packet folder.
#pragma once

#include "platform/ports.hpp"

#include <memory>

namespace quill1xml::platform {

/// Fails as Files::hold does.
std::unique_ptr<FolderHold> holdFolder(Text folder);

}  // namespace quill1xml::platform
