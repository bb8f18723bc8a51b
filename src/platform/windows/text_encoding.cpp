#include "platform/windows/text_encoding.hpp"

#include "platform/windows/com_support.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"
#include "text/letter_case.hpp"

#include <charconv>

namespace quill1xml::platform {
namespace {

std::string lowerCase(Text text) {
    std::string lower = toUtf8(text);
    for (char& c : lower) c = asciiLower(c);
    return lower;
}

UINT codePageNamed(Text encoding) {
    constexpr struct {
        std::string_view prefix;
        UINT base;  // the code page less the number that follows the prefix
    } families[] = {{"iso-8859-", 28590}, {"windows-12", 1200}};
    const std::string name = lowerCase(encoding);
    constexpr struct {
        std::string_view name;
        UINT codePage;
    } others[] = {{"us-ascii", 20127}, {"shift_jis", 932}, {"gb2312", 936}, {"big5", 950}, {"euc-kr", 949}};
    CPINFO info;
    for (const auto& other : others) {
        if (name == other.name && GetCPInfo(other.codePage, &info) != 0) return other.codePage;
    }
    for (const auto& family : families) {
        UINT number = 0;
        const char* const end = name.data() + name.size();
        if (!name.starts_with(family.prefix)) continue;
        const auto parsed = std::from_chars(name.data() + family.prefix.size(), end, number);
        if (parsed.ec != std::errc() || parsed.ptr != end) continue;
        if (GetCPInfo(family.base + number, &info) != 0 && info.MaxCharSize == 1) return family.base + number;
    }
    throw runtimeError(RuntimeError::automationError,
                       u"the document cannot be written in the encoding " + std::u16string(encoding));
}

std::string inCodePage(Text text, UINT codePage) {
    std::string bytes;
    while (!text.empty()) {
        const bool pair = text.size() > 1 && text[0] >= 0xD800 && text[0] < 0xDC00;
        const Text character = text.substr(0, pair ? 2 : 1);
        char encoded[4];
        BOOL lacking = FALSE;
        const int length = pair ? 0
                                : WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, com::wide(character.data()), 1,
                                                      encoded, sizeof encoded, nullptr, &lacking);
        if (length > 0 && lacking == FALSE) {
            bytes.append(encoded, static_cast<std::size_t>(length));
        } else {
            const unsigned code = pair ? 0x10000u + ((text[0] - 0xD800u) << 10) + (text[1] - 0xDC00u) : text[0];
            bytes.append("&#").append(std::to_string(code)).append(";");
        }
        text.remove_prefix(character.size());
    }
    return bytes;
}

}  // namespace

std::string encodeXml(Text text, Text encoding) {
    const std::string name = lowerCase(encoding);
    if (name.empty() || name == "utf-8") return toUtf8(text);
    if (name != "utf-16") return inCodePage(text, codePageNamed(encoding));
    const std::u16string marked = u'\uFEFF' + std::u16string(text);
    return {reinterpret_cast<const char*>(marked.data()), marked.size() * sizeof(char16_t)};
}

}  // namespace quill1xml::platform
