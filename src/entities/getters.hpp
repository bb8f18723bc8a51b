// How the getters of the entity classes read their attributes.
#pragma once

#include "quill1xml/node.hpp"
#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml::entities {

/// How the value of an attribute is taken.
enum class Handling { decoded, plain, optional, required };

/// The value of a property of the type by which it is called; the absent value of its type when the attribute is not
/// there and not required.
std::u16string readText(const Node& node, Text attribute, Handling handling);
Long readLong(const Node& node, Text attribute, Handling handling);
Integer readInteger(const Node& node, Text attribute, Handling handling);
Double readDouble(const Node& node, Text attribute, Handling handling);
Date readDate(const Node& node, Text attribute, Handling handling);

}  // namespace quill1xml::entities
