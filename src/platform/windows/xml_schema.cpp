#include "platform/windows/create_object.hpp"
#include "platform/windows/files.hpp"
#include "platform/windows/http.hpp"
#include "platform/windows/url.hpp"
#include "platform/windows/xml_parsing.hpp"
#include "quill1xml/text.hpp"

namespace quill1xml::platform {
namespace {

constexpr Text schemaNamespace = u"WebStore";
constexpr Text xsdNamespace = u"http://www.w3.org/2001/XMLSchema";

/// Where a schema comes from.
struct SchemaSource {
    std::u16string name;  ///< as it may be shown
    Bytes bytes;
};

SchemaSource readSource(Text location) {
    if (!isHttpUrl(location)) return {std::u16string(location), readBytes(fileOfLocation(location))};
    constexpr int ok = 200;
    const HttpReply reply = httpGet(location);
    std::u16string name = HttpTarget(location).printable;
    if (reply.status != ok) {
        throw runtimeError(RuntimeError::fileNotFound,
                           name + u" (HTTP status " + toUtf16(std::to_string(reply.status)) + u")");
    }
    return {std::move(name), Bytes(reply.body.begin(), reply.body.end())};
}

Error brokenSchema(Text name, Text reason, Long line = 0) {
    std::u16string description = u"The schema ";
    description.append(name).append(u" cannot be used: ").append(reason);
    if (line != 0) description.append(u" (line ").append(toUtf16(std::to_string(line))).append(u")");
    return {applicationError, u"Quill1XML.Store.Load()", description};
}

com::ComPtr<IXMLDOMDocument2> parseSource(const SchemaSource& source, const char16_t* documentClass) {
    ParseError error;
    auto document = parseBytes(source.bytes, documentClass, error);
    if (!document) throw brokenSchema(source.name, error.reason, error.line);
    return document;
}

/// Whether an element of the schema would fetch another document.
bool refersToOthers(IXMLDOMElement* root) {
    for (const auto& node : childElements(root)) {
        com::Bstr name;
        check(node->get_baseName(name.put()));
        const bool refers = name.text() == u"include" || name.text() == u"import" || name.text() == u"redefine";
        if (refers && wrapNode(node.get())->attribute(u"schemaLocation")) return true;
    }
    return false;
}

}  // namespace

std::shared_ptr<MsxmlSchema> loadMsxmlSchema(Text location) {
    const SchemaSource source = readSource(location);
    auto document = parseSource(source, documentClass3);
    com::ComPtr<IXMLDOMElement> root;
    com::Bstr rootNamespace;
    check(document->get_documentElement(root.put()));
    check(root->get_namespaceURI(rootNamespace.put()));
    if (refersToOthers(root.get())) {
        throw brokenSchema(source.name, u"it refers to another schema document; put all declarations into one");
    }
    // Version 3 knows XDR alone, version 6 knows XSD alone.
    const bool xsd = rootNamespace.text() == xsdNamespace;
    const char16_t* const documentClass = xsd ? documentClass6 : documentClass3;
    if (xsd) document = parseSource(source, documentClass);
    auto collection = createObject<IXMLDOMSchemaCollection>(
        xsd ? u"MSXML2.XMLSchemaCache.6.0" : u"MSXML2.XMLSchemaCache", iidXmlDomSchemaCollection);
    const HRESULT result =
        collection->add(com::Bstr(schemaNamespace).get(), com::Variant(static_cast<IDispatch*>(document.get())).get());
    if (FAILED(result)) throw brokenSchema(source.name, errorOf(result).description());
    return std::make_shared<MsxmlSchema>(std::move(collection), documentClass);
}

}  // namespace quill1xml::platform
