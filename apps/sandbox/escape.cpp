#include "escape.hpp"

namespace quill1xml::sandbox {

std::string escaped(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (const char c : utf8) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"': out += "&quot;"; break;
            case '\t': out += "&#9;"; break;
            case '\n': out += "&#10;"; break;
            case '\r': out += "&#13;"; break;
            default: out += static_cast<unsigned char>(c) < 0x20 ? '?' : c;
        }
    }
    return out;
}

}  // namespace quill1xml::sandbox
