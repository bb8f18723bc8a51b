// The parts of a URL that the system's own calls leave to us.
#pragma once

#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml::platform {

bool isHttpUrl(Text location) noexcept;

/// A http or https URL taken apart.
struct HttpTarget {
    /// Throws error 5 for any other URL.
    explicit HttpTarget(Text url);

    std::u16string url;            ///< without credentials: the request object refuses them there
    std::u16string printable;      ///< without credentials and query
    std::u16string host;           ///< without the port
    std::u16string authorization;  ///< the header that carries the credentials; empty when there are none
};

/// The file that a location names, which is a file name or a URL that starts with "file://".
std::u16string fileOfLocation(Text location);

}  // namespace quill1xml::platform
