#include "xml.hpp"

#include "receipt.hpp"

#include <libxml/parser.h>
#include <libxml/xmlerror.h>

#include <limits>
#include <new>
#include <stdexcept>

namespace quill1xml::sandbox {
namespace {

struct FreeParser {
    void operator()(xmlParserCtxt* context) const noexcept { xmlFreeParserCtxt(context); }
};
struct FreeSchemaParser {
    void operator()(xmlSchemaParserCtxt* context) const noexcept { xmlSchemaFreeParserCtxt(context); }
};
struct FreeValidator {
    void operator()(xmlSchemaValidCtxt* context) const noexcept { xmlSchemaFreeValidCtxt(context); }
};

std::string_view view(const xmlChar* text) {
    return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}

std::string describe(const xmlError& error) {
    std::string text = error.message == nullptr ? "Unknown failure." : error.message;
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return "Line " + std::to_string(error.line) + ": " + text;
}

/// Declarations are where entities come from: parsing ends at the first.
void refuseDeclaration(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    *static_cast<bool*>(parser->_private) = true;
    xmlStopParser(parser);
}

/// Generic because later versions of the parser pass the error as const.
constexpr auto keepFirst = [](void* description, auto* error) {
    auto& text = *static_cast<std::string*>(description);
    if (text.empty()) text = describe(*error);
};

}  // namespace

XmlDocument parseXml(std::string_view utf8, std::string_view source) {
    const auto refuse = [source](std::string description) {
        return Refusal(RefusalNumber::notWellFormed, std::string(source), std::move(description));
    };
    if (utf8.empty()) throw refuse("There is no document.");
    if (utf8.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) throw refuse("Too large.");

    const std::unique_ptr<xmlParserCtxt, FreeParser> parser(xmlNewParserCtxt());
    if (!parser) throw std::bad_alloc();
    bool declared = false;
    parser->_private = &declared;
    parser->sax->internalSubset = refuseDeclaration;
    XmlDocument document(xmlCtxtReadMemory(parser.get(), utf8.data(), static_cast<int>(utf8.size()), nullptr, "UTF-8",
                                           XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    if (declared) throw refuse("Document type declarations are not taken.");
    if (!document) throw refuse(describe(*xmlCtxtGetLastError(parser.get())));
    return document;
}

std::string attributeValue(const xmlNode* element, const char* name) {
    const std::unique_ptr<xmlChar, void (*)(void*)> value(
        xmlGetNoNsProp(element, reinterpret_cast<const xmlChar*>(name)), xmlFree);
    return std::string(view(value.get()));
}

std::string_view localName(const xmlNode* node) { return view(node->name); }

std::string_view namespaceOf(const xmlNode* node) {
    return node->ns == nullptr ? std::string_view() : view(node->ns->href);
}

XmlSchema::XmlSchema(std::string_view xsd) : text_(parseXml(xsd, "Schema")) {
    const std::unique_ptr<xmlSchemaParserCtxt, FreeSchemaParser> parser(xmlSchemaNewDocParserCtxt(text_.get()));
    if (!parser) throw std::bad_alloc();
    std::string failure;
    xmlSchemaSetParserStructuredErrors(parser.get(), keepFirst, &failure);
    schema_.reset(xmlSchemaParse(parser.get()));
    if (!schema_) throw std::runtime_error("The store schema is broken. " + failure);
}

void XmlSchema::check(xmlDoc* document) const {
    const std::unique_ptr<xmlSchemaValidCtxt, FreeValidator> validator(xmlSchemaNewValidCtxt(schema_.get()));
    if (!validator) throw std::bad_alloc();
    std::string failure;
    xmlSchemaSetValidStructuredErrors(validator.get(), keepFirst, &failure);
    const int result = xmlSchemaValidateDoc(validator.get(), document);
    if (result < 0) throw std::runtime_error("The schema check itself failed.");
    if (result > 0) throw Refusal(RefusalNumber::notValid, "Schema", failure);
}

}  // namespace quill1xml::sandbox
