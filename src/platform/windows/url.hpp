// The parts of a URL that the system's own calls leave to us.
#pragma once

#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml::platform {

/// The text with its percent escapes undone, in UTF-8, which they are meant in.
std::string percentDecoded(Text text);

/// A http or https URL taken apart.
struct HttpTarget {
    /// Throws error 5 for any other URL.
    explicit HttpTarget(Text url);

    std::u16string url;   ///< without credentials: the request object refuses them there
    std::u16string host;  ///< without the port
    std::u16string user;  ///< of the credentials, without escapes
    std::u16string password;
    std::u16string authorization;  ///< the header that carries the credentials; empty when there are none
};

}  // namespace quill1xml::platform
