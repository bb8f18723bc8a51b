#include "platform/windows/url.hpp"

#include "platform/windows/errors.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"
#include "text/base64.hpp"
#include "text/url.hpp"

#include <windows.h>

#include <shlwapi.h>

#include <cstring>

namespace quill1xml::platform {
namespace {

std::u16string basicAuthorization(const std::string& user, const std::string& password) {
    const std::string plain = user + ":" + password;
    std::u16string header = u"Basic ";
    appendBase64(header, Bytes(plain.begin(), plain.end()));
    return header;
}

}  // namespace

std::string percentDecoded(Text text) {
    std::string decoded = toUtf8(text);
    DWORD size = static_cast<DWORD>(decoded.size()) + 1;
    check(UrlUnescapeA(decoded.data(), nullptr, &size, URL_UNESCAPE_INPLACE));
    decoded.resize(std::strlen(decoded.c_str()));
    return decoded;
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
        const Text credentials = authority.substr(0, at);
        const std::size_t colon = credentials.find(u':');
        const std::string name = percentDecoded(credentials.substr(0, colon));
        const std::string secret = colon == Text::npos ? "" : percentDecoded(credentials.substr(colon + 1));
        user = toUtf16(name);
        password = toUtf16(secret);
        authorization = basicAuthorization(name, secret);
        url.erase(start, at + 1);
    }
    const Text hostAndPort = authority.substr(at + 1);
    // The colons of an IPv6 address stand in brackets.
    host = hostAndPort.substr(0, hostAndPort.find(u':', hostAndPort.find(u']') + 1));
}

}  // namespace quill1xml::platform
