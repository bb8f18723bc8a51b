// The parts of the environment, one factory for each.
#pragma once

#include "platform/ports.hpp"

#include <memory>

namespace quill1xml::platform {

std::shared_ptr<Files> makeFiles();
std::shared_ptr<EventLog> makeEventLog();
std::shared_ptr<Clock> makeClock();

/// Creates COM objects, as the HTTP client does: a thread that calls them has initialised COM and keeps it so while
/// documents, elements and schemas live, which stay on that thread.
std::shared_ptr<Xml> makeXml();

std::shared_ptr<System> makeSystem();

}  // namespace quill1xml::platform
