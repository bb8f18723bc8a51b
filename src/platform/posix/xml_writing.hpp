// Documents of libxml2 as text.
#pragma once

#include <string>
#include <string_view>

#include <libxml/tree.h>

namespace quill1xml::platform {

/// Writes elements, attributes and texts in UTF-8 as libxml2 would, but several times faster: every packet is written
/// once more to be posted. Does not check anything.
class XmlText {
public:
    explicit XmlText(std::string& out) : out_(out) {}

    /// The beginning of a start tag. Prefixes are null where a name has none.
    void startTag(const xmlChar* prefix, const xmlChar* local);

    /// A namespace declaration of the start tag. False, with nothing written, for one that is left to libxml2: it
    /// chooses the quotes by what an address holds.
    bool declaration(const xmlChar* prefix, const xmlChar* address);

    /// The beginning of an attribute of the start tag, its value in any number of parts, and its end.
    void startAttribute(const xmlChar* prefix, const xmlChar* local);
    void value(std::string_view part);
    void endAttribute() { out_.push_back('"'); }

    void endStartTag() { out_.push_back('>'); }
    void endEmptyTag() { out_.append("/>"); }
    void text(std::string_view text);
    void endTag(const xmlChar* prefix, const xmlChar* local);

private:
    void name(const xmlChar* prefix, const xmlChar* local);

    std::string& out_;
};

/// Appends the XML declaration of a document that has one, but without an encoding in it, and a line's end.
void appendDeclaration(std::string& text, const xmlDoc& document);

/// Appends a document in UTF-8, without its XML declaration. Returns false, and leaves the text as it was, for a
/// document that has more than elements, attributes and texts: libxml2 writes the others.
bool appendPlainTree(std::string& text, const xmlDoc& document);

}  // namespace quill1xml::platform
