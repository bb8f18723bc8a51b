#include "platform/posix/parts.hpp"

#include <algorithm>
#include <ctime>

namespace quill1xml::platform {
namespace {

class LocalClock final : public Clock {
public:
    Date now() override {
        const std::time_t seconds = std::time(nullptr);
        std::tm t{};
        if (localtime_r(&seconds, &t) == nullptr) throw runtimeError(RuntimeError::overflow);
        const int second = std::min(t.tm_sec, 59);  // a leap second has no automation date
        return Date::of(t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, second);
    }
};

}  // namespace

std::shared_ptr<Clock> makeClock() { return std::make_shared<LocalClock>(); }

}  // namespace quill1xml::platform
