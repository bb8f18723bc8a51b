#include "platform/posix/xml_schema.hpp"

#include "platform/posix/xml_document.hpp"
#include "platform/posix/xml_memory.hpp"
#include "quill1xml/text.hpp"

#include <new>
#include <utility>

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
    if (xmlNodeDump(buffer.get(), element->doc, copy.get(), 0, 0) < 0) throw std::bad_alloc();
    return toUtf16(firstBytes(view(xmlBufferContent(buffer.get())), shownBytes));
}

/// What the callback finds.
struct Findings {
    ParseError& first;
    MemoryWatch memory{};
};

template <typename XmlError>
void onError(void* data, XmlError* error) noexcept {
    auto& findings = *static_cast<Findings*>(data);
    ParseError& first = findings.first;
    findings.memory.look(*error);
    if (error->level < XML_ERR_ERROR || first) return;
    findings.memory.guard([&first, error] {
        first = parseErrorOf(*error);
        auto* node = static_cast<xmlNode*>(error->node);
        while (node != nullptr && node->type != XML_ELEMENT_NODE) node = node->parent;
        if (node == nullptr) return;
        first.line = lineOf(node);
        first.sourceText = sourceOf(node);
    });
}

}  // namespace

void requireRoomForSchema() {
    constexpr std::size_t enough = 16u * 1024 * 1024;  // but for extraordinary schemas
    requireRoom(enough);
}

std::shared_ptr<XsdSchema> XsdSchema::compile(std::unique_ptr<Document> source, ParseError& error) {
    error = {};
    requireRoomForSchema();
    Findings findings{error};
    std::unique_ptr<xmlSchemaParserCtxt, FreeContext> context(xmlSchemaNewDocParserCtxt(treeOf(*source)));
    if (!context) throw std::bad_alloc();
    xmlSchemaSetParserStructuredErrors(context.get(), &onError, &findings);
    Compiled compiled(xmlSchemaParse(context.get()));
    if (findings.memory.hasRunOut()) {
        // Freeing what is half made would follow pointers that were never set.
        (void)compiled.release();
        (void)context.release();
        throw std::bad_alloc();
    }
    if (!compiled) return nullptr;
    return std::make_shared<XsdSchema>(std::move(source), std::move(compiled));
}

XsdSchema::XsdSchema(std::unique_ptr<Document> source, Compiled compiled)
    : source_(std::move(source)), compiled_(std::move(compiled)) {}

ParseError XsdSchema::validate(xmlDoc* document) const {
    requireRoomForSchema();
    ParseError error;
    Findings findings{error};
    std::unique_ptr<xmlSchemaValidCtxt, FreeContext> context(xmlSchemaNewValidCtxt(compiled_.get()));
    if (!context) throw std::bad_alloc();
    xmlSchemaSetValidStructuredErrors(context.get(), &onError, &findings);
    const int result = xmlSchemaValidateDoc(context.get(), document);
    if (findings.memory.hasRunOut()) (void)context.release();  // as above
    findings.memory.check();
    if (result != 0 && !error) {
        error.code = result;
        error.reason = u"The document could not be validated";
    }
    return error;
}

}  // namespace quill1xml::platform
