// Downloaded documents and their elements, read-only.
#pragma once

#include "quill1xml/types.hpp"

#include <concepts>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quill1xml {

namespace ports {
class Document;
class Element;
}  // namespace ports

/// One element of a document, which lives as long as any of its nodes. An empty node wraps nothing.
class Node {
public:
    Node() = default;
    explicit Node(std::shared_ptr<ports::Element> element);

    bool empty() const noexcept { return element_ == nullptr; }

    /// The value of an attribute by its exact name; nothing when it is absent.
    /// Throws error 91 (Object variable not set) on an empty node.
    std::optional<std::u16string> attribute(Text name) const;

    /// The child elements of that name, in document order. Throws as attribute.
    std::vector<Node> children(Text name) const;

    const std::shared_ptr<ports::Element>& element() const noexcept { return element_; }

private:
    std::shared_ptr<ports::Element> element_;
};

/// Nodes that someone else holds, looked up when a call needs them.
class NodeSource {
public:
    virtual ~NodeSource() = default;

    /// All of them, in their order. Throws Error.
    virtual std::vector<Node> nodes() const = 0;
};

/// Nodes that are only looked at during the call they are passed to: an array's or a source's.
class NodeList {
public:
    constexpr NodeList() = default;

    template <class Nodes>
    requires std::convertible_to<const Nodes&, std::span<const Node>>
    constexpr NodeList(const Nodes& nodes) noexcept : nodes_(nodes) {}

    explicit NodeList(const NodeSource& source) noexcept : source_(&source) {}

    /// Throws what the source throws.
    std::vector<Node> nodes() const;

private:
    std::span<const Node> nodes_;
    const NodeSource* source_ = nullptr;
};

/// A parsed document.
class Document {
public:
    Document() = default;
    explicit Document(std::shared_ptr<ports::Document> document);

    /// The elements at a path of names from the root, such as "Store/Order", in document order, whatever their
    /// namespace. Throws error 91 on an empty document.
    std::vector<Node> select(Text path) const;

    /// The document's text. Throws error 91 on an empty document.
    std::u16string xml() const;

    const std::shared_ptr<ports::Document>& document() const noexcept { return document_; }

private:
    std::shared_ptr<ports::Document> document_;
};

}  // namespace quill1xml
