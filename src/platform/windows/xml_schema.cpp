#include "platform/windows/create_object.hpp"
#include "platform/windows/xml_parsing.hpp"

namespace quill1xml::platform {
namespace {

constexpr Text xsdNamespace = u"http://www.w3.org/2001/XMLSchema";

bool isXsd(IXMLDOMDocument2* document) {
    com::ComPtr<IXMLDOMElement> root;
    com::Bstr rootNamespace;
    check(document->get_documentElement(root.put()), document);
    check(root->get_namespaceURI(rootNamespace.put()), root);
    return rootNamespace.text() == xsdNamespace;
}

}  // namespace

std::shared_ptr<MsxmlSchema> compileMsxmlSchema(com::ComPtr<IXMLDOMDocument2> document, Text targetNamespace,
                                                ParseError& error) {
    error = {};
    // Version 3 knows XDR alone, version 6 knows XSD alone.
    const bool xsd = isXsd(document.get());
    const char16_t* const documentClass = xsd ? documentClass6 : documentClass3;
    if (xsd) {
        com::Bstr text;
        check(document->get_xml(text.put()), document);
        document = parseText(text, documentClass, nullptr, error);
        if (!document) return nullptr;
    }
    auto collection = createObject<IXMLDOMSchemaCollection>(
        xsd ? u"MSXML2.XMLSchemaCache.6.0" : u"MSXML2.XMLSchemaCache", iidXmlDomSchemaCollection);
    const HRESULT result =
        collection->add(com::Bstr(targetNamespace).get(), com::Variant(static_cast<IDispatch*>(document.get())).get());
    if (FAILED(result)) {
        error.code = result;
        error.reason = errorOf(result, collection.get(), iidXmlDomSchemaCollection).description();
        return nullptr;
    }
    return std::make_shared<MsxmlSchema>(std::move(collection), documentClass);
}

}  // namespace quill1xml::platform
