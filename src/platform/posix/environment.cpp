#include "platform/posix/parts.hpp"

namespace quill1xml {

ports::Environment ports::systemEnvironment() {
    using namespace platform;
    return {makeFiles(), makeEventLog(), makeClock(), makeHttp(), makeXml(), makeSystem()};
}

}  // namespace quill1xml
