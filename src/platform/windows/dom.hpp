// The MSXML objects behind elements and documents, for hosts that pass them in or ask for them.
#pragma once

#include "platform/ports.hpp"
#include "platform/windows/com_support.hpp"
#include "platform/windows/errors.hpp"

#include <msxml2.h>

#include <memory>

namespace quill1xml::platform {

// The import libraries lack these.
inline constexpr IID iidXmlDomNode = {0x2933BF80, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
inline constexpr IID iidXmlDomElement = {0x2933BF86, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
inline constexpr IID iidXmlDomDocument2 = {
    0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
inline constexpr IID iidXmlDomSchemaCollection = {
    0x373984C8, 0xB845, 0x449B, {0x91, 0xE7, 0x45, 0xAC, 0x83, 0x03, 0x6A, 0xDE}};
inline constexpr IID iidXmlHttpRequest = {0xED8C108D, 0x4349, 0x11D2, {0x91, 0xA4, 0x00, 0xC0, 0x4F, 0x79, 0x69, 0xE8}};

template <>
inline constexpr IID interfaceId<IXMLDOMNode> = iidXmlDomNode;
template <>
inline constexpr IID interfaceId<IXMLDOMElement> = iidXmlDomElement;
template <>
inline constexpr IID interfaceId<IXMLDOMDocument2> = iidXmlDomDocument2;
template <>
inline constexpr IID interfaceId<IXMLDOMSchemaCollection> = iidXmlDomSchemaCollection;
template <>
inline constexpr IID interfaceId<IXMLHTTPRequest> = iidXmlHttpRequest;

/// The element of a node that a host passed; a node of any version of MSXML will do. Takes a count of its own.
/// Error 13 when the object is null or not an element.
std::shared_ptr<Element> wrapNode(IUnknown* node);

/// The node behind an element, borrowed: it lives as long as the element. Requires an element of this platform.
IXMLDOMNode* unwrap(const Element& element);

/// The document object, borrowed: it lives as long as the document. Requires a document of this platform.
IDispatch* documentDispatch(const Document& document);

/// Whether a node has that qualified name.
bool hasName(IXMLDOMNode* node, Text name);

/// The child elements of an element, in document order.
std::vector<com::ComPtr<IXMLDOMNode>> childElements(IXMLDOMNode* parent);

}  // namespace quill1xml::platform
