// HTTP for the platform's own other parts.
#pragma once

#include "platform/platform.hpp"

namespace quill1xml::platform {

/// Fetches an http or https URL. Fails as Http::post does.
HttpReply httpGet(Text url);

}  // namespace quill1xml::platform
