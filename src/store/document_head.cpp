#include "store/document_head.hpp"

#include "quill1xml/error.hpp"
#include "text/numbers.hpp"
#include "text/tags.hpp"

namespace quill1xml::store {

std::u16string rootTag(Long storeId) {
    std::u16string tag = u"<Store xmlns=\"WebStore\" StoreID=\"";
    appendInteger(tag, storeId);
    return tag.append(u"\">");
}

void appendEnvelope(std::u16string& head, Text envelope) { head.append(u"\r\n").append(envelope); }

std::u16string headFrom(Text firstPacket) {
    std::u16string head;
    for (const Tag& tag : tagsIn(firstPacket)) {
        if (head.empty()) {
            if (tag.name != u"Store") return {};
            try {
                head = rootTag(toLong(tag.value(u"StoreID")));
            } catch (const Error&) {
                return {};
            }
        } else if (tag.name == u"Envelope") {
            appendEnvelope(head, tag.text);
        }
    }
    return head;
}

}  // namespace quill1xml::store
