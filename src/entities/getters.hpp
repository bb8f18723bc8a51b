// How the getters of the entity classes read their attributes.
#pragma once

#include "quill1xml/node.hpp"
#include "quill1xml/ports.hpp"
#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml::entities {

/// How the value of an attribute is taken.
enum class Handling { decoded, plain, optional, required };

/// The value of a property of the type by which it is called; the absent value of its type when the attribute is not
/// there and not required. Numbers are read by the user's decimal separator.
std::u16string readText(const Node& node, Text attribute, Handling handling, const ports::System& system);
Long readLong(const Node& node, Text attribute, Handling handling, const ports::System& system);
Integer readInteger(const Node& node, Text attribute, Handling handling, const ports::System& system);
Double readDouble(const Node& node, Text attribute, Handling handling, const ports::System& system);
Date readDate(const Node& node, Text attribute, Handling handling, const ports::System& system);

}  // namespace quill1xml::entities
