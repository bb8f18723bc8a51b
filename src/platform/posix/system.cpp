#include "platform/posix/parts.hpp"
#include "text/date.hpp"
#include "text/windows_1252.hpp"

#include <unistd.h>

namespace quill1xml::platform {
namespace {

bool isDayZero(const CalendarTime& t) { return t.year == 1899 && t.month == 12 && t.day == 30; }

class PosixSystem final : public System {
public:
    std::uint32_t threadId() const override { return static_cast<std::uint32_t>(gettid()); }

    const CodePage& codePage() const override { return windows1252; }

    std::u16string decimalSeparator() const override { return u"."; }

    std::u16string generalDate(Date date) const override {
        const CalendarTime t = toCalendar(date);
        std::u16string text;
        const auto append = [&text](int value, int digits, Text after) {
            appendPadded(text, value, digits);
            text += after;
        };
        const bool timeOnly = isDayZero(t);
        const bool dateOnly = !timeOnly && t.hour == 0 && t.minute == 0 && t.second == 0;
        if (!timeOnly) {
            append(t.year, 4, u"-");
            append(t.month, 2, u"-");
            append(t.day, 2, dateOnly ? u"" : u" ");
        }
        if (!dateOnly) {
            append(t.hour, 2, u":");
            append(t.minute, 2, u":");
            append(t.second, 2, u"");
        }
        return text;
    }
};

}  // namespace

std::shared_ptr<System> makeSystem() { return std::make_shared<PosixSystem>(); }

}  // namespace quill1xml::platform
