#include "platform/posix/parts.hpp"
#include "quill1xml/http.hpp"

namespace quill1xml {

ports::Environment ports::systemEnvironment() {
    using namespace platform;
    return {makeFiles(), makeEventLog(), makeClock(), systemHttp({}), makeXml(), makeSystem()};
}

}  // namespace quill1xml
