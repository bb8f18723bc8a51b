#include "text/base64.hpp"

namespace quill1xml {

void appendBase64(std::u16string& out, const Bytes& bytes) {
    constexpr Text alphabet = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    out.reserve(out.size() + (bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t left = bytes.size() - i;
        const std::uint32_t group = (std::uint32_t{bytes[i]} << 16) |
                                    (left > 1 ? std::uint32_t{bytes[i + 1]} << 8 : 0u) |
                                    (left > 2 ? std::uint32_t{bytes[i + 2]} : 0u);
        out.push_back(alphabet[group >> 18]);
        out.push_back(alphabet[(group >> 12) & 63]);
        out.push_back(left > 1 ? alphabet[(group >> 6) & 63] : u'=');
        out.push_back(left > 2 ? alphabet[group & 63] : u'=');
    }
}

}  // namespace quill1xml
