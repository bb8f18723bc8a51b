#include "platform/windows/dom.hpp"

#include "platform/windows/errors.hpp"

namespace quill1xml::platform {
namespace {

/// The text of an attribute whose value is not text, as under a schema that gives it a type.
std::u16string typedAttribute(IXMLDOMElement* element, const com::Bstr& name) {
    com::ComPtr<IXMLDOMAttribute> attribute;
    com::Bstr text;
    check(element->getAttributeNode(name.get(), attribute.put()), element);
    if (attribute) check(attribute->get_text(text.put()), static_cast<IXMLDOMNode*>(attribute.get()));
    return std::u16string(text.text());
}

/// The default namespace that an element declares, for versions that do not list it among the attributes.
std::optional<std::u16string> unlistedNamespace(IXMLDOMElement* element) {
    com::ComPtr<IXMLDOMNode> parent;
    com::Bstr prefix;
    com::Bstr own;
    com::Bstr inherited;
    check(element->get_parentNode(parent.put()), element);
    check(element->get_prefix(prefix.put()), element);
    check(element->get_namespaceURI(own.put()), element);
    if (parent) check(parent->get_namespaceURI(inherited.put()), parent);
    if (!prefix.text().empty() || own.text() == inherited.text()) return std::nullopt;
    return std::u16string(own.text());
}

class DomElement final : public Element {
public:
    explicit DomElement(com::ComPtr<IXMLDOMElement> element) : element_(std::move(element)) {}

    std::u16string name() const override {
        com::Bstr name;
        check(element_->get_nodeName(name.put()), element_);
        return std::u16string(name.text());
    }

    Long line() const override { return 0; }

    std::optional<std::u16string> attribute(Text name) const override {
        const com::Bstr wanted(name);
        com::Variant value;
        check(element_->getAttribute(wanted.get(), value.put()), element_);
        switch (value->vt) {
            case VT_BSTR: return std::u16string(com::asText(value->bstrVal, SysStringLen(value->bstrVal)));
            case VT_NULL:
            case VT_EMPTY: return name == u"xmlns" ? unlistedNamespace(element_.get()) : std::nullopt;
            default: return typedAttribute(element_.get(), wanted);
        }
    }

    std::vector<std::shared_ptr<Element>> children(Text name) const override {
        std::vector<std::shared_ptr<Element>> result;
        for (const auto& node : childElements(element_.get())) {
            if (hasName(node.get(), name)) result.push_back(wrapNode(node.get()));
        }
        return result;
    }

    IXMLDOMNode* node() const noexcept { return element_.get(); }

    std::vector<std::shared_ptr<Element>> children() const override {
        std::vector<std::shared_ptr<Element>> result;
        for (const auto& node : childElements(element_.get())) result.push_back(wrapNode(node.get()));
        return result;
    }

private:
    com::ComPtr<IXMLDOMElement> element_;
};

}  // namespace

std::shared_ptr<Element> wrapNode(IUnknown* node) {
    auto element = com::query<IXMLDOMElement>(node, iidXmlDomElement);
    if (!element) throw runtimeError(RuntimeError::typeMismatch);
    return std::make_shared<DomElement>(std::move(element));
}

IXMLDOMNode* unwrap(const Element& element) { return dynamic_cast<const DomElement&>(element).node(); }

bool hasName(IXMLDOMNode* node, Text name) {
    com::Bstr nodeName;
    check(node->get_nodeName(nodeName.put()), node);
    return nodeName.text() == name;
}

std::vector<com::ComPtr<IXMLDOMNode>> childElements(IXMLDOMNode* parent) {
    std::vector<com::ComPtr<IXMLDOMNode>> result;
    com::ComPtr<IXMLDOMNode> node;
    check(parent->get_firstChild(node.put()), parent);
    while (node) {
        DOMNodeType type = NODE_INVALID;
        check(node->get_nodeType(&type), node);
        com::ComPtr<IXMLDOMNode> next;
        check(node->get_nextSibling(next.put()), node);
        if (type == NODE_ELEMENT) result.push_back(std::move(node));
        node = std::move(next);
    }
    return result;
}

}  // namespace quill1xml::platform
