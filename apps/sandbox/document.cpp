#include "document.hpp"

#include "escape.hpp"
#include "receipt.hpp"

#include <charconv>
#include <new>

namespace quill1xml::sandbox {
namespace {

Json attributesOf(const xmlNode* element) {
    Json attributes = Json::object();
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
        const char* name = reinterpret_cast<const char*>(attribute->name);
        if (attribute->ns == nullptr) attributes[name] = attributeValue(element, name);
    }
    return attributes;
}

Json childrenOf(xmlNode* element) {
    Json children = Json::array();
    for (xmlNode* child = xmlFirstElementChild(element); child != nullptr; child = xmlNextElementSibling(child))
        children.push_back(
            {{"element", localName(child)}, {"attributes", attributesOf(child)}, {"children", childrenOf(child)}});
    return children;
}

/// Records are kept apart from the root that declares their namespace, and go out again under another such root.
void dropNamespaces(xmlNode* element) {
    element->ns = nullptr;
    for (xmlAttr* attribute = element->properties; attribute != nullptr;) {
        xmlAttr* next = attribute->next;
        if (attribute->ns != nullptr) xmlRemoveProp(attribute);
        attribute = next;
    }
    for (xmlNode* child = xmlFirstElementChild(element); child != nullptr; child = xmlNextElementSibling(child))
        dropNamespaces(child);
}

std::string textOf(xmlNode* element) {
    dropNamespaces(element);
    const std::unique_ptr<xmlBuffer, void (*)(xmlBuffer*)> buffer(xmlBufferCreate(), xmlBufferFree);
    if (!buffer || xmlNodeDump(buffer.get(), element->doc, element, 0, 0) < 0) throw std::bad_alloc();
    return {reinterpret_cast<const char*>(xmlBufferContent(buffer.get())),
            static_cast<std::size_t>(xmlBufferLength(buffer.get()))};
}

Record readRecord(xmlNode* element, const KeyAttributes& keyAttributes) {
    Record record;
    record.kind = localName(element);
    record.attributes = attributesOf(element);
    record.children = childrenOf(element);
    bool first = true;
    for (const std::string& name : keyAttributes(record.kind)) {
        if (!first) record.key += '|';
        record.key += attributeValue(element, name.c_str());
        first = false;
    }
    record.xml = textOf(element);
    return record;
}

std::int64_t toInteger(const std::string& text) {
    std::int64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

}  // namespace

std::string elementText(std::string_view name, const Json& attributes, const Json& children) {
    std::string out = "<" + std::string(name);
    for (const auto& [attribute, value] : attributes.items())
        out += ' ' + attribute + "=\"" + escaped(value.get_ref<const std::string&>()) + '"';
    if (children.empty()) return out + "/>";
    out += '>';
    for (const Json& child : children)
        out += elementText(child.at("element").get_ref<const std::string&>(), child.at("attributes"),
                           child.at("children"));
    return out + "</" + std::string(name) + '>';
}

void requireStoreRoot(const xmlDoc* document, std::string_view requiredNamespace, std::string_view source) {
    const xmlNode* root = xmlDocGetRootElement(document);
    if (localName(root) == "Store" && namespaceOf(root) == requiredNamespace) return;
    const auto named = [](std::string_view name, std::string_view space) {
        return std::string(name) + (space.empty() ? " without namespace" : " in namespace " + std::string(space));
    };
    throw Refusal(RefusalNumber::wrongRoot, std::string(source),
                  "The root element is " + named(localName(root), namespaceOf(root)) + ", not " +
                      named("Store", requiredNamespace) + ".");
}

Sender senderOf(const xmlDoc* document) {
    xmlNode* root = xmlDocGetRootElement(document);
    for (xmlNode* child = xmlFirstElementChild(root); child != nullptr; child = xmlNextElementSibling(child))
        if (localName(child) == "Envelope")
            return {attributeValue(child, "UserName"), attributeValue(child, "Password")};
    return {};
}

StoreDocument readStoreDocument(xmlDoc* document, const KeyAttributes& keyAttributes) {
    xmlNode* root = xmlDocGetRootElement(document);
    StoreDocument result;
    result.storeId = toInteger(attributeValue(root, "StoreID"));
    result.user = senderOf(document).user;
    result.store = attributesOf(root);
    for (xmlNode* child = xmlFirstElementChild(root); child != nullptr; child = xmlNextElementSibling(child)) {
        if (localName(child) != "Envelope") result.records.push_back(readRecord(child, keyAttributes));
    }
    return result;
}

}  // namespace quill1xml::sandbox
