#include "platform/windows/parts.hpp"

namespace quill1xml::platform {

Environment systemEnvironment() {
    return {makeFiles(), makeEventLog(), makeClock(), makeHttp(), makeXml(), makeSystem()};
}

}  // namespace quill1xml::platform
