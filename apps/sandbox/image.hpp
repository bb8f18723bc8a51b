// Image requests: one picture that a client sends or takes away.
#pragma once

#include <libxml/tree.h>

#include <optional>
#include <string>
#include <string_view>

namespace quill1xml::sandbox {

struct ImageRequest {
    std::string user;
    std::string password;
    std::string folder;
    std::string name;
    bool thumbnail = false;  ///< the client asks for a small copy too
    bool deleted = false;    ///< the image is to go; there are no bytes then
    std::string bytes;
};

/// Reads a request. Throws a Refusal when it is none, when its base64 is broken, and when folder or name could mean
/// another place than one name in one folder.
ImageRequest readImageRequest(const xmlDoc* document);

/// Line breaks may stand anywhere; padding is required. Nothing when the text is no base64.
std::optional<std::string> decodeBase64(std::string text);

/// The media type by the first bytes of an image; "application/octet-stream" when they are of no usual one.
const char* imageType(std::string_view bytes);

}  // namespace quill1xml::sandbox
