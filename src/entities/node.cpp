#include "quill1xml/node.hpp"

#include "quill1xml/ports.hpp"

#include <utility>

namespace quill1xml {
namespace {

template <class Pointer>
auto& notNull(const Pointer& pointer) {
    if (pointer == nullptr) throw runtimeError(RuntimeError::objectNotSet);
    return *pointer;
}

}  // namespace

Node::Node(std::shared_ptr<ports::Element> element) : element_(std::move(element)) {}

std::optional<std::u16string> Node::attribute(Text name) const { return notNull(element_).attribute(name); }

std::vector<Node> Node::children(Text name) const {
    std::vector<Node> nodes;
    for (auto& element : notNull(element_).children(name)) nodes.emplace_back(std::move(element));
    return nodes;
}

std::vector<Node> NodeList::nodes() const {
    return source_ != nullptr ? source_->nodes() : std::vector<Node>(nodes_.begin(), nodes_.end());
}

Document::Document(std::shared_ptr<ports::Document> document) : document_(std::move(document)) {}

std::vector<Node> Document::select(Text path) const {
    std::vector<Node> nodes;
    for (auto& element : notNull(document_).select(path)) nodes.emplace_back(std::move(element));
    return nodes;
}

std::u16string Document::xml() const { return notNull(document_).xml(); }

}  // namespace quill1xml
