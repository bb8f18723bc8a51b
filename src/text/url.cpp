#include "text/url.hpp"

#include "text/letter_case.hpp"

#include <algorithm>

namespace quill1xml {
namespace {

bool hasScheme(Text location, Text scheme) { return equalIgnoringCase(location.substr(0, scheme.size()), scheme); }

}  // namespace

bool isHttpUrl(Text location) { return hasScheme(location, u"http://") || hasScheme(location, u"https://"); }

bool isFileUrl(Text location) { return hasScheme(location, u"file://"); }

std::u16string printableUrl(Text url) {
    const std::size_t host = url.find(u"://") + 3;
    const std::size_t path = std::min(url.find_first_of(u"/?#", host), url.size());
    const std::size_t credentials = url.substr(0, path).rfind(u'@');
    const std::size_t end = std::min(url.find_first_of(u"?#", path), url.size());
    std::u16string shown(url.substr(0, host));
    const std::size_t start = credentials == Text::npos ? host : credentials + 1;
    shown.append(url.substr(start, path - start));
    return path == end ? shown.append(u"/") : shown.append(url.substr(path, end - path));
}

}  // namespace quill1xml
