#include "platform/posix/xml_parsing.hpp"

#include "quill1xml/text.hpp"

#include <cstdint>
#include <new>

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

namespace quill1xml::platform {
namespace {

constexpr int maximumDepth = 256;
constexpr std::size_t maximumSize = 1024u * 1024 * 1024;
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

/// The line around the parser's position, cut where it is long.
std::u16string sourceLine(const xmlParserInput& input) {
    std::string_view before(reinterpret_cast<const char*>(input.base),
                            static_cast<std::size_t>(input.cur - input.base));
    std::string_view after(reinterpret_cast<const char*>(input.cur), static_cast<std::size_t>(input.end - input.cur));
    before.remove_prefix(before.find_last_of("\r\n") + 1);
    after = after.substr(0, after.find_first_of("\r\n"));
    return toUtf16(lastBytes(before, shownBytes)) + toUtf16(firstBytes(after, shownBytes));
}

void addPosition(ParseError& error, xmlParserCtxt* context) {
    if (context->input == nullptr) return;
    error.filePosition = static_cast<Long>(xmlByteConsumed(context));
    error.line = context->input->line;
    error.linePosition = context->input->col;
    error.sourceText = sourceLine(*context->input);
}

ParseError& errorIn(xmlParserCtxt* context) { return *static_cast<ParseError*>(context->_private); }

void refuse(xmlParserCtxt* context, xmlParserErrors code, Text reason) {
    ParseError& error = errorIn(context);
    if (!error) {
        error.code = code;
        error.reason = reason;
        addPosition(error, context);
    }
    xmlStopParser(context);
}

// The constness of the error differs between versions of libxml2.
template <typename XmlError>
void onError(void* data, XmlError* error) noexcept {
    auto* context = static_cast<xmlParserCtxt*>(data);
    // The document type is not our concern, and what follows the first error follows from it.
    if (error->level < XML_ERR_ERROR || error->domain == XML_FROM_DTD || errorIn(context)) return;
    errorIn(context) = parseErrorOf(*error);
    addPosition(errorIn(context), context);
}

void onStartElement(void* data, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri, int namespaceCount,
                    const xmlChar** namespaces, int attributeCount, int defaultedCount,
                    const xmlChar** attributes) noexcept {
    auto* context = static_cast<xmlParserCtxt*>(data);
    if (context->nodeNr >= maximumDepth) {
        refuse(context, XML_ERR_INTERNAL_ERROR, u"Elements are nested more than 256 levels deep");
        return;
    }
    xmlSAX2StartElementNs(data, name, prefix, uri, namespaceCount, namespaces, attributeCount, defaultedCount,
                          attributes);
    const auto line = static_cast<std::intptr_t>(context->input->line);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the field is free for our use, and a line is what we keep in it.
    if (context->node != nullptr) context->node->_private = reinterpret_cast<void*>(line);
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
    const std::unique_ptr<xmlParserCtxt, FreeContext> context(xmlNewParserCtxt());
    if (!context) throw std::bad_alloc();
    context->_private = &error;
    context->sax->serror = &onError;
    context->sax->startElementNs = &onStartElement;
    context->sax->entityDecl = &onEntity;
    context->sax->unparsedEntityDecl = &onUnparsedEntity;
    context->sax->attributeDecl = &onAttributeDeclaration;
    // XML_PARSE_HUGE lifts the limit of 10 MB for an attribute, which an image exceeds, and with it the limit of depth,
    // which onStartElement sets again. Without entities it opens nothing else.
    const int options = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_BIG_LINES |
                        (encoding == SourceEncoding::utf8 ? XML_PARSE_IGNORE_ENC : 0);
    TreeOwner tree(xmlCtxtReadMemory(context.get(), document.data(), static_cast<int>(document.size()), nullptr,
                                     nullptr, options));
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
