#include "platform/windows/parts.hpp"

#include "platform/windows/com_support.hpp"

#include <string>

namespace quill1xml::platform {
namespace {

// A single string of an event may not be longer.
constexpr std::size_t longestText = 31839;

class WindowsEventLog final : public EventLog {
public:
    void writeError(Text text) noexcept override try {
        const HANDLE source = RegisterEventSourceW(nullptr, L"Quill1XML");
        if (source == nullptr) return;
        const std::u16string shortened(text.substr(0, longestText));
        const wchar_t* strings[] = {com::wide(shortened.c_str())};
        ReportEventW(source, EVENTLOG_ERROR_TYPE, 0, 0, nullptr, 1, 0, strings, nullptr);
        DeregisterEventSource(source);
    } catch (const std::bad_alloc&) {
        // The caller gets the error itself.
    }
};

}  // namespace

std::shared_ptr<EventLog> makeEventLog() { return std::make_shared<WindowsEventLog>(); }

}  // namespace quill1xml::platform
