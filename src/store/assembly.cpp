// Complete documents around the first packet file of a kind: orders, customer staff and quotations.

#include "store/document.hpp"
#include "store/methods.hpp"
#include "store/packets.hpp"
#include "text/date.hpp"
#include "text/numbers.hpp"

namespace quill1xml::store::bodies {
namespace {

/// The content of the first packet file of a kind that carries the store number.
std::u16string firstPacket(const State& state, Text kind, Long storeId) {
    std::u16string name(kind);
    appendInteger(name, storeId);
    name.append(u"_1");
    const std::u16string fileName = tempFileName(state, name);
    if (state.environment.files->list(fileName).empty()) throw runtimeError(RuntimeError::fileNotFound, fileName);
    return state.environment.files->readText(fileName);
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
    text.append(firstPacket(state, kind, arguments.lngStoreID));
    text.append(u"</Store>");
    if (!state.documentLoaded) load(state, DocumentSource::memory, {}, text);
    return text;
}

}  // namespace

std::u16string XML(State& state, const arguments::XML& arguments) {
    return assemble(state, arguments, u"WebStoreOrder");
}

std::u16string CustomerXML(State& state, const arguments::CustomerXML& arguments) {
    return assemble(state, arguments, u"WebStoreDebtorStaff");
}

std::u16string QuoteXML(State& state, const arguments::QuoteXML& arguments) {
    return assemble(state, arguments, u"WebStoreQuote");
}

void Save(State&, const arguments::Save&) {}

}  // namespace quill1xml::store::bodies
