#include "platform/posix/xml_document.hpp"

#include "platform/posix/files.hpp"
#include "platform/posix/short_utf8.hpp"
#include "platform/posix/xml_memory.hpp"
#include "platform/posix/xml_writing.hpp"
#include "quill1xml/text.hpp"
#include "text/declared_encoding.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>

#include <libxml/xmlsave.h>

namespace quill1xml::platform {
namespace {

/// Bytes of UTF-8 as a count of UTF-16 units.
Long utf16Length(std::string_view utf8) {
    Long length = 0;
    for (const char c : utf8) {
        const auto byte = static_cast<std::uint8_t>(c);
        if ((byte & 0xC0) != 0x80) length += byte >= 0xF0 ? 2 : 1;
    }
    return length;
}

struct Tree {
    TreeOwner document;
    std::shared_ptr<const XsdSchema> schema;
    std::u16string url;
};

/// A qualified name to look for.
class QualifiedName {
public:
    explicit QualifiedName(Text name) : utf8_(name), colon_(std::find(utf8_.begin(), utf8_.end(), ':')) {}

    bool isOf(const xmlChar* localName, const xmlNs* space) const {
        return isOf(localName, space == nullptr ? nullptr : space->prefix);
    }

    bool isOf(const xmlChar* localName, const xmlChar* prefix) const {
        if (prefix == nullptr) return equals(utf8_.begin(), localName);
        return colon_ != utf8_.end() && std::string_view(utf8_.begin(), colon_) == view(prefix) &&
               equals(colon_ + 1, localName);
    }

private:
    static bool equals(const char* a, const xmlChar* b) {
        return std::strcmp(a, reinterpret_cast<const char*>(b)) == 0;
    }

    const ShortUtf8 utf8_;
    const char* colon_;
};

/// Values are ASCII mostly, which only needs widening.
std::u16string widen(std::string_view utf8) {
    const bool ascii =
        std::all_of(utf8.begin(), utf8.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return ascii ? std::u16string(utf8.begin(), utf8.end()) : toUtf16(utf8);
}

std::optional<std::u16string> namespaceDeclaration(const xmlNode* element, const QualifiedName& name) {
    const xmlChar* const declaration = BAD_CAST "xmlns";
    const xmlChar* const noPrefix = nullptr;
    for (const xmlNs* space = element->nsDef; space != nullptr; space = space->next) {
        const bool found =
            space->prefix == nullptr ? name.isOf(declaration, noPrefix) : name.isOf(space->prefix, declaration);
        if (found) return widen(space->href == nullptr ? std::string_view{} : view(space->href));
    }
    return std::nullopt;
}

class XmlElement final : public Element {
public:
    XmlElement(std::shared_ptr<const Tree> tree, const xmlNode* node) : tree_(std::move(tree)), node_(node) {}

    std::u16string name() const override {
        std::u16string qualified;
        if (node_->ns != nullptr && node_->ns->prefix != nullptr) {
            qualified.append(widen(view(node_->ns->prefix))).push_back(u':');
        }
        return qualified.append(widen(view(node_->name)));
    }

    Long line() const override { return lineOf(node_); }

    std::optional<std::u16string> attribute(Text name) const override {
        const QualifiedName qualified(name);
        const xmlAttr* const start = next_ != nullptr ? next_ : node_->properties;
        const xmlAttr* found = find(qualified, start, nullptr);
        if (found == nullptr) found = find(qualified, node_->properties, start);
        if (found == nullptr) return namespaceDeclaration(node_, qualified);
        next_ = found->next;
        // Without entities of its own a document has one text node for a value, none for an empty one.
        return found->children == nullptr ? std::u16string{} : widen(view(found->children->content));
    }

    std::vector<std::shared_ptr<Element>> children(Text name) const override;
    std::vector<std::shared_ptr<Element>> children() const override;

private:
    static const xmlAttr* find(const QualifiedName& name, const xmlAttr* from, const xmlAttr* to) {
        while (from != to && !name.isOf(from->name, from->ns)) from = from->next;
        return from == to ? nullptr : from;
    }

    std::shared_ptr<const Tree> tree_;
    const xmlNode* node_;
    /// Behind the attribute found last: attributes are mostly asked for in the order in which they stand.
    mutable const xmlAttr* next_ = nullptr;
};

bool isElement(const xmlNode* node, const QualifiedName& name) {
    return node->type == XML_ELEMENT_NODE && name.isOf(node->name, node->ns);
}

void appendChildren(std::vector<const xmlNode*>& out, const xmlNode* parent, const QualifiedName& name) {
    for (const xmlNode* node = parent->children; node != nullptr; node = node->next) {
        if (isElement(node, name)) out.push_back(node);
    }
}

std::vector<std::shared_ptr<Element>> wrap(const std::shared_ptr<const Tree>& tree,
                                           const std::vector<const xmlNode*>& nodes) {
    std::vector<std::shared_ptr<Element>> elements;
    elements.reserve(nodes.size());
    for (const xmlNode* node : nodes) elements.push_back(std::make_shared<XmlElement>(tree, node));
    return elements;
}

std::vector<std::shared_ptr<Element>> XmlElement::children(Text name) const {
    std::vector<const xmlNode*> nodes;
    appendChildren(nodes, node_, QualifiedName(name));
    return wrap(tree_, nodes);
}

std::vector<std::shared_ptr<Element>> XmlElement::children() const {
    std::vector<const xmlNode*> nodes;
    for (const xmlNode* node = node_->children; node != nullptr; node = node->next) {
        if (node->type == XML_ELEMENT_NODE) nodes.push_back(node);
    }
    return wrap(tree_, nodes);
}

struct FreeOutput {
    void operator()(xmlBuffer* buffer) const noexcept { xmlBufferFree(buffer); }
};

/// The tree's text in an encoding. Throws error 440 when the encoding is not known or lacks a character of a name.
std::string serialise(xmlDoc* document, const char* encoding, int options) {
    const MemoryWatch memory;
    const std::unique_ptr<xmlBuffer, FreeOutput> buffer(xmlBufferCreate());
    if (!buffer) throw std::bad_alloc();
    xmlSaveCtxt* const output = xmlSaveToBuffer(buffer.get(), encoding, options | XML_SAVE_AS_XML);
    const bool known = output != nullptr;
    const bool written = known && xmlSaveDoc(output, document) >= 0;
    const bool closed = known && xmlSaveClose(output) >= 0;
    memory.check();
    if (!written || !closed) {
        throw runtimeError(RuntimeError::automationError,
                           u"the document cannot be written in the encoding " + toUtf16(encoding));
    }
    return {reinterpret_cast<const char*>(xmlBufferContent(buffer.get())),
            static_cast<std::size_t>(xmlBufferLength(buffer.get()))};
}

/// The document in UTF-8, with its XML declaration where it has one but without an encoding in it.
std::string withoutEncoding(xmlDoc* document) {
    std::string text;
    appendDeclaration(text, *document);
    if (!appendPlainTree(text, *document)) text += serialise(document, "UTF-8", XML_SAVE_NO_DECL);
    return text;
}

class XmlDocument final : public Document {
public:
    explicit XmlDocument(std::shared_ptr<const Tree> tree) : tree_(std::move(tree)) {}

    std::shared_ptr<Element> root() const override { return std::make_shared<XmlElement>(tree_, rootNode()); }

    std::vector<std::shared_ptr<Element>> select(Text path) const override {
        std::size_t slash = path.find(u'/');
        std::vector<const xmlNode*> level;
        if (isElement(rootNode(), QualifiedName(path.substr(0, slash)))) level.push_back(rootNode());
        while (slash != Text::npos) {
            path.remove_prefix(slash + 1);
            slash = path.find(u'/');
            const QualifiedName name(path.substr(0, slash));
            std::vector<const xmlNode*> next;
            for (const xmlNode* node : level) appendChildren(next, node, name);
            level = std::move(next);
        }
        return wrap(tree_, level);
    }

    std::u16string xml() const override { return toUtf16(utf8()); }

    std::string utf8() const override { return withoutEncoding(document()); }

    void save(Text fileName) const override {
        const xmlChar* encoding = document()->encoding;
        writeBytes(fileName, encoding == nullptr ? withoutEncoding(document())
                                                 : serialise(document(), reinterpret_cast<const char*>(encoding), 0));
    }

    ParseError validate() override {
        if (!tree_->schema) return {};
        ParseError error = tree_->schema->validate(document());
        if (error) error.url = tree_->url;
        return error;
    }

    xmlDoc* document() const { return tree_->document.get(); }

private:
    const xmlNode* rootNode() const { return xmlDocGetRootElement(document()); }

    std::shared_ptr<const Tree> tree_;
};

}  // namespace

xmlDoc* treeOf(const Document& document) { return dynamic_cast<const XmlDocument&>(document).document(); }

std::unique_ptr<Document> makeDocument(TreeOwner tree, std::shared_ptr<const XsdSchema> schema, Text url) {
    return std::make_unique<XmlDocument>(
        std::make_shared<const Tree>(Tree{std::move(tree), std::move(schema), std::u16string(url)}));
}

std::unique_ptr<Document> parseUtf8(std::string_view document, std::shared_ptr<const XsdSchema> schema,
                                    ParseError& error) {
    TreeOwner tree = parseTree(document, SourceEncoding::utf8, error);
    if (!tree) {
        error.filePosition = utf16Length(document.substr(0, static_cast<std::size_t>(error.filePosition)));
        return nullptr;
    }
    // The declaration did not matter for reading, but it does for saving.
    const std::string encoding(declaredEncoding(document));
    if (!encoding.empty() && (tree->encoding = xmlStrdup(BAD_CAST encoding.c_str())) == nullptr) {
        throw std::bad_alloc();
    }
    return makeDocument(std::move(tree), std::move(schema), {});
}

}  // namespace quill1xml::platform
