// Tells failures of the transport from those of what was transported.
#pragma once

#include "quill1xml/ports.hpp"

namespace quill1xml::cli {

/// The environment with an HTTP client that sets `failed`, which must outlive it, when a transport fails.
ports::Environment watched(ports::Environment environment, bool& failed);

}  // namespace quill1xml::cli
