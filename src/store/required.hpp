// What a document must hold.
#pragma once

#include "quill1xml/ports.hpp"

#include <memory>
#include <string>

namespace quill1xml::store {

/// The value of an attribute that must be there; error 91 otherwise.
std::u16string requiredAttribute(const ports::Element& element, Text name);

/// The first element at a path of a document; error 91 when there is none.
std::shared_ptr<ports::Element> requiredElement(const ports::Document& document, Text path);

}  // namespace quill1xml::store
