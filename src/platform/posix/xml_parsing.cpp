#include "platform/posix/xml_parsing.hpp"

#include "platform/posix/xml_limits.hpp"
#include "platform/posix/xml_memory.hpp"
#include "quill1xml/text.hpp"
#include "text/xml_attribute.hpp"

#include <cstdint>
#include <new>

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

namespace quill1xml::platform {
namespace {

constexpr std::size_t shownBytes = 100;  // of the offending line, on either side of the position

struct FreeContext {
    void operator()(xmlParserCtxt* context) const noexcept { xmlFreeParserCtxt(context); }
};

bool isContinuation(char byte) { return (static_cast<std::uint8_t>(byte) & 0xC0) == 0x80; }

std::string_view lastBytes(std::string_view text, std::size_t count) {
    if (text.size() > count) text.remove_prefix(text.size() - count);
    while (!text.empty() && isContinuation(text.front())) text.remove_prefix(1);
    return text;
}

/// The line around the parser's position, cut where it is long. Where that is inside an attribute, the attribute's name
/// stands before it, so that a reader knows a secret for one.
std::u16string sourceLine(const xmlParserInput& input) {
    std::string_view before(reinterpret_cast<const char*>(input.base),
                            static_cast<std::size_t>(input.cur - input.base));
    std::string_view after(reinterpret_cast<const char*>(input.cur), static_cast<std::size_t>(input.end - input.cur));
    before.remove_prefix(before.find_last_of("\r\n") + 1);
    after = after.substr(0, after.find_first_of("\r\n"));
    const std::string_view shown = lastBytes(before, shownBytes);
    before.remove_suffix(shown.size());
    return toUtf16(std::string(openAttribute(before)).append(shown)) + toUtf16(firstBytes(after, shownBytes));
}

void addPosition(ParseError& error, xmlParserCtxt* context) {
    if (context->input == nullptr) return;
    error.filePosition = static_cast<Long>(xmlByteConsumed(context));
    error.line = context->input->line;
    error.linePosition = context->input->col;
    error.sourceText = sourceLine(*context->input);
}

/// What the callbacks find.
struct Findings {
    ParseError& error;
    MemoryWatch memory{};
};

Findings& findingsIn(xmlParserCtxt* context) { return *static_cast<Findings*>(context->_private); }

void refuse(xmlParserCtxt* context, xmlParserErrors code, Text reason) noexcept {
    Findings& findings = findingsIn(context);
    findings.memory.guard([&] {
        if (findings.error) return;
        findings.error.code = code;
        findings.error.reason = reason;
        addPosition(findings.error, context);
    });
    xmlStopParser(context);
}

// The constness of the error differs between versions of libxml2.
template <typename XmlError>
void onError(void* data, XmlError* error) noexcept {
    auto* context = static_cast<xmlParserCtxt*>(data);
    Findings& findings = findingsIn(context);
    findings.memory.look(*error);
    // The document type is not our concern, and what follows the first error follows from it.
    if (error->level < XML_ERR_ERROR || error->domain == XML_FROM_DTD || findings.error) return;
    findings.memory.guard([&] {
        findings.error = parseErrorOf(*error);
        addPosition(findings.error, context);
    });
}

/// Whether an element got all of its attributes and their values; each is five fields as the parser hands them over.
bool hasAttributes(const xmlNode& element, int count, const xmlChar** fields) {
    const xmlAttr* attribute = element.properties;
    for (int i = 0; i < count; ++i, fields += 5) {
        if (attribute == nullptr) return false;
        const bool empty = fields[3] == fields[4];
        if (!empty && attribute->children == nullptr) return false;
        attribute = attribute->next;
    }
    return true;
}

void onStartElement(void* data, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri, int namespaceCount,
                    const xmlChar** namespaces, int attributeCount, int defaultedCount,
                    const xmlChar** attributes) noexcept {
    auto* context = static_cast<xmlParserCtxt*>(data);
    const int depth = context->nodeNr;
    if (const Text excess = excessAt(*context, depth); !excess.empty()) {
        refuse(context, XML_ERR_INTERNAL_ERROR, excess);
        return;
    }
    xmlSAX2StartElementNs(data, name, prefix, uri, namespaceCount, namespaces, attributeCount, defaultedCount,
                          attributes);
    // libxml2 leaves out what it has no memory for, and not always says so.
    if (context->nodeNr == depth || !hasAttributes(*context->node, attributeCount, attributes)) {
        findingsIn(context).memory.ranOut();
        xmlStopParser(context);
        return;
    }
    const auto line = static_cast<std::intptr_t>(context->input->line);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the field is free for our use, and a line is what we keep in it.
    context->node->_private = reinterpret_cast<void*>(line);
}

void onEntity(void* data, const xmlChar*, int, const xmlChar*, const xmlChar*, xmlChar*) noexcept {
    refuse(static_cast<xmlParserCtxt*>(data), XML_ERR_ENTITY_PROCESSING, u"Entity declarations are not accepted");
}

void onUnparsedEntity(void* data, const xmlChar*, const xmlChar*, const xmlChar*, const xmlChar*) noexcept {
    onEntity(data, nullptr, 0, nullptr, nullptr, nullptr);
}

void onAttributeDeclaration(void* data, const xmlChar*, const xmlChar*, int, int, const xmlChar* defaultValue,
                            xmlEnumeration* values) noexcept {
    xmlFreeEnumeration(values);
    if (defaultValue == nullptr) return;
    refuse(static_cast<xmlParserCtxt*>(data), XML_ERR_ATTLIST_NOT_STARTED, u"Default attributes are not accepted");
}

}  // namespace

TreeOwner parseTree(std::string_view document, SourceEncoding encoding, ParseError& error) {
    error = {};
    if (document.size() > maximumSize) {
        error.code = XML_ERR_NO_MEMORY;
        error.reason = u"The document is larger than 1 GiB";
        return nullptr;
    }
    if (const Text excess = excessIn(document); !excess.empty()) {
        error.code = XML_ERR_INTERNAL_ERROR;
        error.reason = excess;
        return nullptr;
    }
    Findings findings{error};
    const std::unique_ptr<xmlParserCtxt, FreeContext> context(xmlNewParserCtxt());
    if (!context) throw std::bad_alloc();
    context->_private = &findings;
    context->sax->serror = &onError;
    context->sax->startElementNs = &onStartElement;
    context->sax->entityDecl = &onEntity;
    context->sax->unparsedEntityDecl = &onUnparsedEntity;
    context->sax->attributeDecl = &onAttributeDeclaration;
    // XML_PARSE_HUGE lifts the limit of 10 MB for an attribute, which an image exceeds, and with it the limit of depth,
    // which onStartElement sets again. Without entities it opens nothing else.
    // XML_PARSE_COMPACT keeps short values within their nodes, which no one changes.
    const int options = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_BIG_LINES | XML_PARSE_COMPACT |
                        (encoding == SourceEncoding::utf8 ? XML_PARSE_IGNORE_ENC : 0);
    TreeOwner tree(xmlCtxtReadMemory(context.get(), document.data(), static_cast<int>(document.size()), nullptr,
                                     nullptr, options));
    findings.memory.check();
    // libxml2 takes a null character after the root element for the end.
    const bool complete = context->input != nullptr && context->input->cur == context->input->end;
    if (!error && (!tree || !complete)) {
        error.code = XML_ERR_DOCUMENT_END;
        error.reason = u"The document does not end with its root element";
        addPosition(error, context.get());
    }
    if (error) tree.reset();
    return tree;
}

ParseError parseErrorOf(const xmlError& error) {
    ParseError result;
    result.code = error.code;
    result.line = error.line;
    if (error.message != nullptr) result.reason = toUtf16(error.message);
    result.reason.erase(result.reason.find_last_not_of(u" \r\n") + 1);
    return result;
}

Long lineOf(const xmlNode* element) { return static_cast<Long>(reinterpret_cast<std::intptr_t>(element->_private)); }

std::string_view firstBytes(std::string_view text, std::size_t count) {
    if (text.size() <= count) return text;
    while (count > 0 && isContinuation(text[count])) --count;
    return text.substr(0, count);
}

}  // namespace quill1xml::platform
