#include "platform/posix/xml_schema.hpp"

#include "quill1xml/text.hpp"

#include <algorithm>
#include <new>

namespace quill1xml::platform {
namespace {

constexpr std::size_t shownBytes = 200;  // of the offending element

struct FreeContext {
    void operator()(xmlSchemaParserCtxt* context) const noexcept { xmlSchemaFreeParserCtxt(context); }
    void operator()(xmlSchemaValidCtxt* context) const noexcept { xmlSchemaFreeValidCtxt(context); }
};

struct FreeNode {
    void operator()(xmlNode* node) const noexcept { xmlFreeNode(node); }
    void operator()(xmlBuffer* buffer) const noexcept { xmlBufferFree(buffer); }
};

/// The beginning of an element, without its content.
std::u16string sourceOf(xmlNode* element) {
    constexpr int withAttributes = 2;
    const std::unique_ptr<xmlNode, FreeNode> copy(xmlDocCopyNode(element, element->doc, withAttributes));
    const std::unique_ptr<xmlBuffer, FreeNode> buffer(xmlBufferCreate());
    if (!copy || !buffer) throw std::bad_alloc();
    xmlNodeDump(buffer.get(), element->doc, copy.get(), 0, 0);
    return toUtf16(firstBytes(view(xmlBufferContent(buffer.get())), shownBytes));
}

template <typename XmlError>
void onError(void* data, XmlError* error) noexcept {
    auto& first = *static_cast<ParseError*>(data);
    if (error->level < XML_ERR_ERROR || first) return;
    first = parseErrorOf(*error);
    auto* node = static_cast<xmlNode*>(error->node);
    while (node != nullptr && node->type != XML_ELEMENT_NODE) node = node->parent;
    if (node == nullptr) return;
    first.line = lineOf(node);
    first.sourceText = sourceOf(node);
}

Error brokenSchema(Text location, const ParseError& error) {
    std::u16string description = u"The schema ";
    description.append(location).append(u" cannot be used: ").append(error.reason);
    if (error.line != 0) description.append(u" (line ").append(toUtf16(std::to_string(error.line))).append(u")");
    return {applicationError, u"Quill1XML.Store.Load()", description};
}

/// An element of a schema that would fetch another document, if there is one.
const xmlNode* findReference(xmlDoc* schema) {
    for (const xmlNode* node = xmlDocGetRootElement(schema)->children; node != nullptr; node = node->next) {
        if (node->type != XML_ELEMENT_NODE) continue;
        const std::string_view name = view(node->name);
        const bool refers = name == "include" || name == "import" || name == "redefine";
        if (refers && xmlHasProp(node, BAD_CAST "schemaLocation") != nullptr) return node;
    }
    return nullptr;
}

}  // namespace

XsdSchema::XsdSchema(std::string_view schema, Text location) {
    ParseError error;
    tree_ = parseTree(schema, SourceEncoding::declared, error);
    if (!tree_) throw brokenSchema(location, error);
    if (const xmlNode* reference = findReference(tree_.get())) {
        error.line = lineOf(reference);
        error.reason = u"it refers to another schema document; put all declarations into one";
        throw brokenSchema(location, error);
    }
    const std::unique_ptr<xmlSchemaParserCtxt, FreeContext> context(xmlSchemaNewDocParserCtxt(tree_.get()));
    if (!context) throw std::bad_alloc();
    xmlSchemaSetParserStructuredErrors(context.get(), &onError, &error);
    schema_.reset(xmlSchemaParse(context.get()));
    if (!schema_) throw brokenSchema(location, error);
}

ParseError XsdSchema::validate(xmlDoc* document) const {
    const std::unique_ptr<xmlSchemaValidCtxt, FreeContext> context(xmlSchemaNewValidCtxt(schema_.get()));
    if (!context) throw std::bad_alloc();
    ParseError error;
    xmlSchemaSetValidStructuredErrors(context.get(), &onError, &error);
    const int result = xmlSchemaValidateDoc(context.get(), document);
    if (result != 0 && !error) {
        error.code = result;
        error.reason = u"The document could not be validated";
    }
    return error;
}

}  // namespace quill1xml::platform
