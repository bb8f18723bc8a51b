#include "platform/posix/parts.hpp"
#include "quill1xml/text.hpp"

#include <new>

#include <syslog.h>

namespace quill1xml::platform {
namespace {

class Syslog final : public EventLog {
public:
    // The name stands in the text: openlog would change what the host process logs under.
    void writeError(Text text) noexcept override try {
        syslog(LOG_USER | LOG_ERR, "Quill1XML: %s", toUtf8(text).c_str());
    } catch (const std::bad_alloc&) {
        // The caller gets the error itself.
    }
};

}  // namespace

std::shared_ptr<EventLog> makeEventLog() { return std::make_shared<Syslog>(); }

}  // namespace quill1xml::platform
