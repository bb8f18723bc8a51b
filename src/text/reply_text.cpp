#include "text/reply_text.hpp"

#include "quill1xml/text.hpp"
#include "text/declared_encoding.hpp"
#include "text/letter_case.hpp"
#include "text/utf.hpp"
#include "text/windows_1252.hpp"

#include <algorithm>
#include <optional>
#include <utility>

namespace quill1xml {
namespace {

enum class Charset { utf8, utf16, utf16LittleEndian, utf16BigEndian, latin1, windows1252 };

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = asciiLower(c);
    return lower;
}

std::optional<Charset> charsetNamed(std::string_view name) {
    constexpr struct {
        std::string_view name;
        Charset charset;
    } charsets[] = {
        {"utf-8", Charset::utf8},
        {"us-ascii", Charset::utf8},
        {"utf-16", Charset::utf16},
        {"utf-16le", Charset::utf16LittleEndian},
        {"utf-16be", Charset::utf16BigEndian},
        {"iso-8859-1", Charset::latin1},
        {"windows-1252", Charset::windows1252},
    };
    for (const auto& known : charsets) {
        if (lowerCase(name) == known.name) return known.charset;
    }
    return std::nullopt;
}

/// The charset parameter of a content type, empty when there is none.
std::string_view charsetParameter(std::string_view contentType) {
    constexpr std::string_view parameter = "charset=";
    constexpr std::string_view padding = " \t\"'";
    const std::size_t start = lowerCase(contentType).find(parameter);
    if (start == std::string_view::npos) return {};
    std::string_view value = contentType.substr(start + parameter.size());
    value = value.substr(0, value.find(';'));
    const std::size_t first = value.find_first_not_of(padding);
    if (first == std::string_view::npos) return {};
    return value.substr(first, value.find_last_not_of(padding) - first + 1);
}

Charset charsetOf(const ports::HttpReply& reply) {
    if (const auto charset = charsetNamed(charsetParameter(reply.contentType))) return *charset;
    // A document in UTF-16 shows by its first two bytes, and its declaration cannot be read before that is known.
    using namespace std::string_view_literals;
    if (reply.body.starts_with("<\0"sv) || reply.body.starts_with("\0<"sv)) return Charset::utf16;
    const Charset declared = charsetNamed(declaredEncoding(reply.body)).value_or(Charset::utf8);
    return declared == Charset::latin1 || declared == Charset::windows1252 ? declared : Charset::utf8;
}

std::u16string fromUtf16(std::string_view bytes, bool bigEndian) {
    const auto unit = [bytes, bigEndian](std::size_t i) {
        const auto first = static_cast<std::uint8_t>(bytes[i]);
        const auto second = static_cast<std::uint8_t>(bytes[i + 1]);
        return static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
    };
    std::u16string text;
    text.reserve(bytes.size() / 2 + 1);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) text.push_back(unit(i));
    if (bytes.size() % 2 != 0) text.push_back(u'\uFFFD');
    return text;
}

template <typename Character>
std::u16string fromBytes(std::string_view bytes, Character character) {
    std::u16string text(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [character](char byte) { return character(static_cast<std::uint8_t>(byte)); });
    return text;
}

std::u16string decode(std::string_view bytes, Charset charset) {
    switch (charset) {
        case Charset::utf8: return toUtf16(bytes);
        case Charset::utf16: return fromUtf16(bytes, bytes.starts_with('\0'));
        case Charset::utf16LittleEndian: return fromUtf16(bytes, false);
        case Charset::utf16BigEndian: return fromUtf16(bytes, true);
        case Charset::latin1: return fromBytes(bytes, [](std::uint8_t byte) { return char16_t{byte}; });
        case Charset::windows1252: return fromBytes(bytes, [](std::uint8_t byte) { return windows1252[byte]; });
    }
    return {};
}

/// A large body that is UTF-8 already is only handed on.
std::string fromUtf8(std::string body, std::size_t markSize) {
    body.erase(0, markSize);
    return isUtf8(body) ? std::move(body) : toUtf8(toUtf16(body));
}

}  // namespace

std::string replyText(ports::HttpReply reply) {
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    const std::string_view body = reply.body;
    if (body.starts_with(utf8Mark)) return fromUtf8(std::move(reply.body), utf8Mark.size());
    if (body.starts_with("\xFF\xFE")) return toUtf8(decode(body.substr(2), Charset::utf16LittleEndian));
    if (body.starts_with("\xFE\xFF")) return toUtf8(decode(body.substr(2), Charset::utf16BigEndian));
    const Charset charset = charsetOf(reply);
    return charset == Charset::utf8 ? fromUtf8(std::move(reply.body), 0) : toUtf8(decode(body, charset));
}

}  // namespace quill1xml
