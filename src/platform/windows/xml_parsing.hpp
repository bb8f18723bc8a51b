// Untrusted XML into documents of MSXML.
#pragma once

#include "platform/ports.hpp"
#include "platform/windows/dom.hpp"

#include <memory>
#include <span>

namespace quill1xml::platform {

/// A schema and the class of documents that can use it: a collection serves documents of its own version only.
struct MsxmlSchema final : Schema {
    MsxmlSchema(com::ComPtr<IXMLDOMSchemaCollection> schemas, const char16_t* documentClassName)
        : collection(std::move(schemas)), documentClass(documentClassName) {}

    com::ComPtr<IXMLDOMSchemaCollection> collection;
    const char16_t* documentClass;
};

inline constexpr const char16_t* documentClass3 = u"MSXML2.DOMDocument";
inline constexpr const char16_t* documentClass6 = u"MSXML2.DOMDocument.6.0";

/// Why a document is not as it should be; code 0 when it is.
ParseError parseErrorOf(IXMLDOMParseError* error);

/// Parses a document of at most 256 levels. Nothing outside the document is read, and one that declares entities or
/// attribute lists is refused. Returns null and fills the error when it is refused or not well-formed.
com::ComPtr<IXMLDOMDocument2> parseText(const com::Bstr& text, const char16_t* documentClass, const MsxmlSchema* schema,
                                        ParseError& error);

/// As parseText, from bytes in the encoding they declare.
com::ComPtr<IXMLDOMDocument2> parseBytes(std::span<const std::uint8_t> bytes, const MsxmlSchema* schema,
                                         ParseError& error);

/// The class of documents that go with a schema, or with none.
const char16_t* classFor(const MsxmlSchema* schema);

/// Compiles a schema document. Fails as Xml::compile does.
std::shared_ptr<MsxmlSchema> compileMsxmlSchema(com::ComPtr<IXMLDOMDocument2> document, Text targetNamespace,
                                                ParseError& error);

}  // namespace quill1xml::platform
