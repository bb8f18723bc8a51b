#include "quill1xml/cstring.hpp"

#include "quill1xml/error.hpp"
#include "text/code_page.hpp"
#include "text/windows_1252.hpp"

namespace quill1xml {

CString::CString() : CString(windows1252) {}

CString::CString(const CodePage& codePage) : codePage_(codePage) {}

void CString::concat(Text s) {
    Bytes bytes;
    bytes.reserve(s.size());
    for (const char16_t c : s) {
        const auto byte = codePageByte(codePage_, c);
        if (!byte) throw runtimeError(RuntimeError::overflow, u"a character has no code in the code page");
        bytes.push_back(*byte);
    }
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

Long CString::length() const { return static_cast<Long>(bytes_.size()); }

std::u16string CString::text() const {
    std::u16string text;
    text.reserve(bytes_.size());
    for (const std::uint8_t byte : bytes_) text.push_back(byte < 0x80 ? char16_t{byte} : codePage_[byte]);
    return text;
}

void CString::reset() { bytes_.clear(); }

}  // namespace quill1xml
