// The nodes that hosts pass in, of whatever type.
#pragma once

#include "platform/windows/dom.hpp"
#include "quill1xml/node.hpp"

#include <memory>

namespace quill1xml::automation {

/// The node that an object is. What is no element has neither attributes nor children: reading it is error 91, as is
/// reading nothing, which is a node too. Error 13 with the name when the object is no node.
Node nodeOf(IUnknown* passed, Text name);

/// The object behind a node of this platform, borrowed; null for an empty node.
IXMLDOMNode* objectOf(const Node& node);

/// The nodes of a list, which is walked when they are asked for. Nothing is a list too: walking it is error 91. Error
/// 13 with the name when the object is no list.
std::unique_ptr<const NodeSource> nodesOf(IUnknown* passed, Text name);

}  // namespace quill1xml::automation
