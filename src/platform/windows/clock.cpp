#include "platform/windows/parts.hpp"

#include <windows.h>

namespace quill1xml::platform {
namespace {

class WindowsClock final : public Clock {
public:
    Date now() override {
        SYSTEMTIME t;
        GetLocalTime(&t);
        return Date::of(t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond);
    }
};

}  // namespace

std::shared_ptr<Clock> makeClock() { return std::make_shared<WindowsClock>(); }

}  // namespace quill1xml::platform
