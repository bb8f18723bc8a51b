// Text as a number of each type. What was understood and written is understood as the same number.
#include "fuzz.hpp"
#include "text/numbers.hpp"

using namespace quill1xml;

namespace {

std::u16string written(double value) {
    std::u16string text;
    appendNumberText(text, value, u".");
    return text;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = toUtf16(fuzz::textOf(data, size));
    fuzz::attempt([&] { toInteger(text); });
    fuzz::attempt([&] {
        const Long whole = toLong(text);
        std::u16string digits;
        appendInteger(digits, whole);
        if (toLong(digits) != whole) fuzz::find("whole number " + toUtf8(digits));
    });
    fuzz::attempt([&] {
        const std::u16string number = written(toDouble(text));
        std::u16string again;
        try {
            again = written(toDouble(number));
        } catch (const Error& error) {
            // The 15 digits of the greatest numbers may round to a number beyond the range.
            if (error.number() == 6) return;
            fuzz::find("number " + toUtf8(number) + ": " + error.what());
        }
        if (again != number) fuzz::find("number " + toUtf8(number) + " becomes " + toUtf8(again));
    });
    return 0;
}
