#include "store/required.hpp"

#include "quill1xml/error.hpp"

#include <utility>

namespace quill1xml::store {

std::u16string requiredAttribute(const ports::Element& element, Text name) {
    auto value = element.attribute(name);
    if (!value) {
        throw runtimeError(RuntimeError::objectNotSet, u"the attribute " + std::u16string(name) + u" is missing");
    }
    return *std::move(value);
}

std::shared_ptr<ports::Element> requiredElement(const ports::Document& document, Text path) {
    auto found = document.select(path);
    if (found.empty()) {
        throw runtimeError(RuntimeError::objectNotSet, u"the element " + std::u16string(path) + u" is missing");
    }
    return std::move(found.front());
}

}  // namespace quill1xml::store
