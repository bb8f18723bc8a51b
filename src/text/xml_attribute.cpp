#include "text/xml_attribute.hpp"

#include "text/numbers.hpp"

namespace quill1xml {

void appendXmlAttribute(std::u16string& out, Text name, Text value) {
    out.append(u" ").append(name).append(u"=\"");
    for (const char16_t c : value) {
        const bool reserved = c == u'&' || c == u'"' || c == u'<' || c == u'>';
        if (reserved || c == u'\t' || c == u'\r' || c == u'\n') {
            out.append(u"&#");
            appendInteger(out, c);
            out.push_back(u';');
        } else {
            out.push_back(c);
        }
    }
    out.push_back(u'"');
}

}  // namespace quill1xml
