// Complete documents around the first packet file of a kind: orders, customer staff and quotations.

#include "store/document.hpp"
#include "store/packets.hpp"
#include "store/perform.hpp"
#include "text/date.hpp"
#include "text/numbers.hpp"

namespace quill1xml::store {
namespace {

/// The content of the first packet file of a kind that carries the store number.
std::u16string firstPacketOf(const State& state, Text kind, Long storeId) {
    const std::u16string name = path(state, {.kind = kind, .storeId = storeId});
    if (state.environment.files->list(name).empty()) throw runtimeError(RuntimeError::fileNotFound, name);
    return state.environment.files->readText(name);
}

template <class Arguments>
std::u16string assemble(State& state, const Arguments& arguments, Text kind) {
    state.schemaSource = arguments.strWebStoreSchemaSource;
    std::u16string text = u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\r\n<Store xmlns=\"WebStore\" StoreID=\"";
    appendInteger(text, arguments.lngStoreID);
    text.append(u"\">\r\n<Envelope DateCreated=\"");
    appendDateText(text, state.environment.clock->now());
    text.append(u"\" UserName=\"");
    state.xmlText.encode(text, arguments.strUserName, false);
    text.append(u"\" Password=\"");
    state.xmlText.encode(text, arguments.strPassword, false);
    text.append(u"\"/>\r\n");
    text.append(firstPacketOf(state, kind, arguments.lngStoreID));
    text.append(u"</Store>");
    if (!state.documentLoaded) loadText(state, {{text}});
    return text;
}

}  // namespace

std::u16string perform(State& state, const arguments::XML& arguments) { return assemble(state, arguments, u"Order"); }

std::u16string perform(State& state, const arguments::CustomerXML& arguments) {
    return assemble(state, arguments, u"DebtorStaff");
}

std::u16string perform(State& state, const arguments::QuoteXML& arguments) {
    return assemble(state, arguments, u"Quote");
}

void perform(State&, const arguments::Save&) {}

}  // namespace quill1xml::store
