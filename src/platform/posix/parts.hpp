// The parts of the environment, one factory for each.
#pragma once

#include "platform/platform.hpp"

#include <memory>

namespace quill1xml::platform {

class CurlHttp;

std::shared_ptr<Files> makeFiles();
std::shared_ptr<EventLog> makeEventLog();
std::shared_ptr<Clock> makeClock();

/// The HTTP client fetches the schemas that are named by an http or https URL.
std::shared_ptr<Xml> makeXml(std::shared_ptr<CurlHttp> http);

std::shared_ptr<System> makeSystem();

}  // namespace quill1xml::platform
