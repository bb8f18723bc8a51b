// Text as a date. What was understood and written is understood as the same date.
#include "text/date.hpp"
#include "fuzz.hpp"

using namespace quill1xml;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = toUtf16(fuzz::textOf(data, size));
    fuzz::attempt([&] {
        const Date date = Date::fromText(text);
        std::u16string written;
        try {
            appendDateText(written, date);
            if (Date::fromText(written) == date) return;
        } catch (const Error& error) {
            written += u": " + error.description();
        }
        fuzz::find("date " + toUtf8(written));
    });
    return 0;
}
