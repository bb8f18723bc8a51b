// The shop window: what a store shows of itself, to people as pages and to programs as JSON.
#pragma once

#include "storage.hpp"

#include <httplib.h>

#include <functional>
#include <string>

namespace quill1xml::sandbox {

/// Adds the addresses of the window to a server, which must not outlive the storage. The function gives the server's
/// own address once it listens.
void addWindow(httplib::Server& server, Storage& storage, const std::function<std::string()>& url);

}  // namespace quill1xml::sandbox
