#include "platform/posix/http.hpp"
#include "platform/posix/parts.hpp"

namespace quill1xml::platform {

Environment systemEnvironment() {
    const auto http = std::make_shared<CurlHttp>();
    return {makeFiles(), makeEventLog(), makeClock(), http, makeXml(http), makeSystem()};
}

}  // namespace quill1xml::platform
