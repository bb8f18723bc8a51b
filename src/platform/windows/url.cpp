#include "platform/windows/url.hpp"

#include "platform/wildcard.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"
#include "text/base64.hpp"

#include <charconv>

namespace quill1xml::platform {
namespace {

std::string percentDecoded(Text text) {
    const std::string encoded = toUtf8(text);
    std::string decoded;
    for (std::size_t i = 0; i < encoded.size(); ++i) {
        const char* const digits = encoded.data() + i + 1;
        unsigned value = 0;
        const bool escape = encoded[i] == '%' && i + 2 < encoded.size() &&
                            std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2;
        decoded.push_back(escape ? static_cast<char>(value) : encoded[i]);
        if (escape) i += 2;
    }
    return decoded;
}

std::u16string authorizationOf(Text credentials) {
    const std::size_t colon = credentials.find(u':');
    const std::string password = colon == Text::npos ? "" : percentDecoded(credentials.substr(colon + 1));
    const std::string plain = percentDecoded(credentials.substr(0, colon)) + ":" + password;
    std::u16string header = u"Basic ";
    appendBase64(header, Bytes(plain.begin(), plain.end()));
    return header;
}

}  // namespace

bool isHttpUrl(Text location) noexcept {
    return matchesWildcard(location, u"http://*", true) || matchesWildcard(location, u"https://*", true);
}

HttpTarget::HttpTarget(Text text) : url(text) {
    if (!isHttpUrl(text)) {
        // The text may hold a password, so it is not repeated here.
        throw runtimeError(RuntimeError::invalidProcedureCall,
                           u"a URL that starts with http:// or https:// is expected");
    }
    const std::size_t start = text.find(u"://") + 3;
    const Text authority = text.substr(start, text.find_first_of(u"/?#", start) - start);
    const std::size_t at = authority.rfind(u'@');
    if (at != Text::npos) {
        authorization = authorizationOf(authority.substr(0, at));
        url.erase(start, at + 1);
    }
    printable = url.substr(0, url.find_first_of(u"?#"));
    const Text hostAndPort = authority.substr(at + 1);
    // The colons of an IPv6 address stand in brackets.
    host = hostAndPort.substr(0, hostAndPort.find(u':', hostAndPort.find(u']') + 1));
}

std::u16string fileOfLocation(Text location) {
    if (!matchesWildcard(location, u"file://*", true)) return std::u16string(location);
    std::u16string name = toUtf16(percentDecoded(location.substr(location.find(u"://") + 3)));
    if (name.starts_with(u"localhost/")) name.erase(0, name.find(u'/'));
    return name.starts_with(u'/') ? name.substr(1) : u"\\\\" + name;
}

}  // namespace quill1xml::platform
