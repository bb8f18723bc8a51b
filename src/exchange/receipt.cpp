#include "exchange/receipt.hpp"

#include "quill1xml/error.hpp"
#include "store/required.hpp"
#include "text/numbers.hpp"
#include "text/reply_text.hpp"

#include <utility>

namespace quill1xml::exchange {
namespace {

constexpr Text refusal = u"Server: ";

}  // namespace

void checkReceipt(const ports::Element& receipt) {
    const auto errors = receipt.children(u"Error");
    if (errors.empty()) throw runtimeError(RuntimeError::objectNotSet, u"the receipt has no Error element");
    const ports::Element& error = *errors.front();
    const Long number = toLong(store::requiredAttribute(error, u"Number"));
    if (number == 0) return;
    throw Error(number, error.attribute(u"Source").value_or(u""),
                std::u16string(refusal) + error.attribute(u"Description").value_or(u""));
}

bool isRefusal(const Error& error) { return error.description().starts_with(refusal); }

std::shared_ptr<ports::Element> readReceipt(ports::Xml& xml, ports::HttpReply reply) {
    ports::ParseError parseError;
    const auto document = xml.parseBytes(replyText(std::move(reply)), ports::SourceEncoding::utf8, parseError);
    if (document == nullptr) {
        throw Error(applicationError, u"Quill1XML.Store.Send()", u"Response XML failed to load.");
    }
    auto receipt = store::requiredElement(*document, u"Receipt");
    checkReceipt(*receipt);
    return receipt;
}

}  // namespace quill1xml::exchange
