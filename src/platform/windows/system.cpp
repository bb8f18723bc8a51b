#include "platform/windows/com_support.hpp"
#include "platform/windows/errors.hpp"
#include "platform/windows/parts.hpp"
#include "text/date.hpp"
#include "text/windows_1252.hpp"

namespace quill1xml::platform {
namespace {

CodePage ansiCodePage() {
    CodePage characters;
    CPINFO info;
    const bool singleByte = GetCPInfo(CP_ACP, &info) != 0 && info.MaxCharSize == 1;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const char byte = static_cast<char>(i);
        wchar_t character = 0;
        const bool known = singleByte && MultiByteToWideChar(CP_ACP, 0, &byte, 1, &character, 1) == 1;
        characters[i] = known ? static_cast<char16_t>(character) : windows1252[i];
    }
    return characters;
}

class WindowsSystem final : public System {
public:
    std::uint32_t threadId() const override { return GetCurrentThreadId(); }

    const CodePage& codePage() const override { return codePage_; }

    std::u16string decimalSeparator() const override {
        wchar_t buffer[8];
        const int length = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, buffer, 8);
        if (length <= 1) return u".";
        return std::u16string(com::asText(buffer, static_cast<std::size_t>(length - 1)));
    }

    std::u16string generalDate(Date date) const override {
        // In whole seconds, or a time just before midnight would show as midnight.
        const CalendarTime t = toCalendar(date);
        date = Date::of(t.year, t.month, t.day, t.hour, t.minute, t.second);
        com::Bstr text;
        check(VarBstrFromDate(date.days, LOCALE_USER_DEFAULT, 0, text.put()));
        return std::u16string(text.text());
    }

private:
    CodePage codePage_ = ansiCodePage();
};

}  // namespace

std::shared_ptr<System> makeSystem() { return std::make_shared<WindowsSystem>(); }

}  // namespace quill1xml::platform
