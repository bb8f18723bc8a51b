// Downloaded records as the automation objects that hosts get.
#pragma once

#include "quill1xml/ports.hpp"

namespace quill1xml::automation {

/// The system's environment with objects that are counted references to IDispatch, each made through its registered
/// class as any host would, or through this DLL's own where none is registered.
ports::Environment serverEnvironment();

}  // namespace quill1xml::automation
