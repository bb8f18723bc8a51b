#include "automation/com/host_nodes.hpp"

#include "platform/windows/errors.hpp"
#include "quill1xml/ports.hpp"

#include <utility>

namespace quill1xml::automation {
namespace {

constexpr IID iidXmlDomNodeList = {0x2933BF82, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

[[noreturn]] void throwNotSet() { throw runtimeError(RuntimeError::objectNotSet); }

/// A document, an attribute, a text: hosts may wrap it, and find nothing to read.
class OtherNode final : public ports::Element {
public:
    explicit OtherNode(com::ComPtr<IXMLDOMNode> node) : node_(std::move(node)) {}

    std::u16string name() const override { throwNotSet(); }
    Long line() const override { return 0; }
    std::optional<std::u16string> attribute(Text) const override { throwNotSet(); }
    std::vector<std::shared_ptr<Element>> children(Text) const override { throwNotSet(); }
    std::vector<std::shared_ptr<Element>> children() const override { throwNotSet(); }

    IXMLDOMNode* node() const noexcept { return node_.get(); }

private:
    com::ComPtr<IXMLDOMNode> node_;
};

class HostList final : public NodeSource {
public:
    HostList(com::ComPtr<IXMLDOMNodeList> list, Text name) : list_(std::move(list)), name_(name) {}

    std::vector<Node> nodes() const override {
        if (!list_) throw runtimeError(RuntimeError::objectNotSet, name_);
        long length = 0;
        check(list_->get_length(&length));
        std::vector<Node> nodes;
        for (long i = 0; i < length; ++i) {
            com::ComPtr<IXMLDOMNode> node;
            check(list_->get_item(i, node.put()));
            nodes.push_back(nodeOf(node.get(), name_));
        }
        return nodes;
    }

private:
    void check(HRESULT result) const {
        if (FAILED(result)) throw platform::errorOf(result, list_.get(), iidXmlDomNodeList);
    }

    com::ComPtr<IXMLDOMNodeList> list_;
    std::u16string name_;
};

}  // namespace

Node nodeOf(IUnknown* passed, Text name) {
    if (passed == nullptr) return {};
    if (com::query<IXMLDOMElement>(passed, platform::iidXmlDomElement)) return Node(platform::wrapNode(passed));
    auto node = com::query<IXMLDOMNode>(passed, platform::iidXmlDomNode);
    if (!node) throw runtimeError(RuntimeError::typeMismatch, name);
    return Node(std::make_shared<OtherNode>(std::move(node)));
}

IXMLDOMNode* objectOf(const Node& node) {
    if (node.empty()) return nullptr;
    const auto* const other = dynamic_cast<const OtherNode*>(node.element().get());
    return other != nullptr ? other->node() : platform::unwrap(*node.element());
}

std::unique_ptr<const NodeSource> nodesOf(IUnknown* passed, Text name) {
    auto list = com::query<IXMLDOMNodeList>(passed, iidXmlDomNodeList);
    if (passed != nullptr && !list) throw runtimeError(RuntimeError::typeMismatch, name);
    return std::make_unique<HostList>(std::move(list), name);
}

}  // namespace quill1xml::automation
