#include "platform/windows/xml_parsing.hpp"

#include "platform/windows/create_object.hpp"
#include "platform/windows/document_type.hpp"
#include "platform/windows/source_text.hpp"

#include <algorithm>

namespace quill1xml::platform {
namespace {

constexpr long maximumDepth = 256;

/// Sets a property, which older versions may not have.
void setProperty(IXMLDOMDocument2* document, Text name, const com::Variant& value) {
    const HRESULT result = document->setProperty(com::Bstr(name).get(), value.get());
    // What it says about the failure must not explain a later one.
    if (FAILED(result)) SetErrorInfo(0, nullptr);
}

/// An empty document that will not reach out while it loads.
com::ComPtr<IXMLDOMDocument2> newDocument(const char16_t* documentClass, const MsxmlSchema* schema) {
    auto document = createObject<IXMLDOMDocument2>(documentClass, iidXmlDomDocument2);
    check(document->put_async(VARIANT_FALSE), document);
    check(document->put_validateOnParse(VARIANT_FALSE), document);
    check(document->put_resolveExternals(VARIANT_FALSE), document);
    setProperty(document.get(), u"ProhibitDTD", com::Variant(true));
    setProperty(document.get(), u"MaxElementDepth", com::Variant(maximumDepth));
    if (schema != nullptr) check(document->putref_schemas(com::Variant(schema->collection.get()).get()), document);
    return document;
}

std::nullptr_t refuse(Text reason, ParseError& error) {
    error = {};
    error.code = E_FAIL;
    error.reason = reason;
    return nullptr;
}

constexpr Text noDeclarations = u"Entity declarations and attribute lists are not accepted";

/// Fills a document by one of its own calls, which tells whether the document is well-formed.
template <class Load>
com::ComPtr<IXMLDOMDocument2> loaded(com::ComPtr<IXMLDOMDocument2> document, ParseError& error, Load load) {
    error = {};
    VARIANT_BOOL success = VARIANT_FALSE;
    check(load(document.get(), &success), document);
    if (success != VARIANT_FALSE) return document;
    com::ComPtr<IXMLDOMParseError> source;
    check(document->get_parseError(source.put()), document);
    error = parseErrorOf(source.get());
    if (!error) error.code = E_FAIL;
    return nullptr;
}

}  // namespace

ParseError parseErrorOf(IXMLDOMParseError* source) {
    ParseError error;
    const auto text = [source](auto get) {
        com::Bstr value;
        (source->*get)(value.put());
        return std::u16string(value.text());
    };
    const auto number = [source](auto get) {
        long value = 0;
        (source->*get)(&value);
        return static_cast<Long>(value);
    };
    error.code = number(&IXMLDOMParseError::get_errorCode);
    error.filePosition = number(&IXMLDOMParseError::get_filepos);
    error.line = number(&IXMLDOMParseError::get_line);
    error.linePosition = number(&IXMLDOMParseError::get_linepos);
    error.reason = text(&IXMLDOMParseError::get_reason);
    error.reason.erase(error.reason.find_last_not_of(u" \r\n") + 1);
    // Positions count from 1.
    const auto offset = static_cast<std::size_t>(std::max<Long>(error.linePosition, 1) - 1);
    error.sourceText = excerpt(text(&IXMLDOMParseError::get_srcText), offset);
    error.url = text(&IXMLDOMParseError::get_url);
    if (error && error.reason.empty()) error.reason = errorOf(error.code).description();
    return error;
}

const char16_t* classFor(const MsxmlSchema* schema) {
    return schema != nullptr ? schema->documentClass : documentClass3;
}

com::ComPtr<IXMLDOMDocument2> parseText(const com::Bstr& text, const char16_t* documentClass, const MsxmlSchema* schema,
                                        ParseError& error) {
    if (hasDeclarations(text.text())) return refuse(noDeclarations, error);
    // Some versions take it for the end.
    if (text.text().find(u'\0') != Text::npos) return refuse(u"The document holds a null character", error);
    return loaded(
        newDocument(documentClass, schema), error,
        [&text](IXMLDOMDocument2* document, VARIANT_BOOL* success) { return document->loadXML(text.get(), success); });
}

com::ComPtr<IXMLDOMDocument2> parseBytes(std::span<const std::uint8_t> bytes, const MsxmlSchema* schema,
                                         ParseError& error) {
    if (hasDeclarations(bytes)) return refuse(noDeclarations, error);
    // As bytes, not by name: MSXML would read "%" and "#" in a name as parts of a URL.
    const com::Variant source = com::Variant::ofBytes(std::as_bytes(bytes));
    return loaded(
        newDocument(classFor(schema), schema), error,
        [&source](IXMLDOMDocument2* document, VARIANT_BOOL* success) { return document->load(source.get(), success); });
}

}  // namespace quill1xml::platform
