#include "exchange/receipt.hpp"

#include "platform/reply_text.hpp"
#include "quill1xml/error.hpp"
#include "text/numbers.hpp"

namespace quill1xml::exchange {

std::u16string requiredAttribute(const platform::Element& element, Text name) {
    auto value = element.attribute(name);
    if (!value) {
        throw runtimeError(RuntimeError::objectNotSet, u"the attribute " + std::u16string(name) + u" is missing");
    }
    return *std::move(value);
}

std::shared_ptr<platform::Element> requiredElement(const platform::Document& document, Text path) {
    auto found = document.select(path);
    if (found.empty()) {
        throw runtimeError(RuntimeError::objectNotSet, u"the element " + std::u16string(path) + u" is missing");
    }
    return std::move(found.front());
}

void checkReceipt(const platform::Element& receipt) {
    const auto errors = receipt.children(u"Error");
    if (errors.empty()) throw runtimeError(RuntimeError::objectNotSet, u"the receipt has no Error element");
    const platform::Element& error = *errors.front();
    const Long number = toLong(requiredAttribute(error, u"Number"));
    if (number == 0) return;
    throw Error(number, error.attribute(u"Source").value_or(u""),
                u"Server: " + error.attribute(u"Description").value_or(u""));
}

std::shared_ptr<platform::Element> readReceipt(platform::Xml& xml, const platform::HttpReply& reply) {
    platform::ParseError parseError;
    const auto document = xml.parse(platform::replyText(reply), nullptr, parseError);
    if (document == nullptr) {
        throw Error(applicationError, u"Quill1XML.Store.Send()", u"Response XML failed to load.");
    }
    auto receipt = requiredElement(*document, u"Receipt");
    checkReceipt(*receipt);
    return receipt;
}

}  // namespace quill1xml::exchange
