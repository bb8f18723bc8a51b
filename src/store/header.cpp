// The start of a store document: the root start tag and the envelope.

#include "records/record.hpp"
#include "store/methods.hpp"
#include "store/packets.hpp"
#include "text/numbers.hpp"

namespace quill1xml::store::bodies {
namespace {

/// The packet file that begins with the root start tag.
constexpr Text firstPacket = u"WebStore1";

/// The start tag that every packet but the first begins with.
std::u16string headOf(Long storeId) {
    std::u16string head = u"<Store xmlns=\"WebStore\" StoreID=\"";
    appendInteger(head, storeId);
    return head.append(u"\">");
}

}  // namespace

void Create(State& state, const arguments::Create& arguments) {
    if (state.tempFilePath.empty()) state.tempFilePath = u"C:\\";
    methods::CleanupTempFiles(state, {});
    if (!state.storeElement.empty()) {
        throw Error(applicationError, records::Create.source(), u"A new store has already been created.");
    }
    methods::SetStoreID(state, {arguments.lngStoreID});
    state.schemaSource = arguments.strWebStoreSchemaSource;

    // A valid number makes the head, whatever becomes of the settings after it.
    if (arguments.lngStoreID >= 1) state.documentHead = headOf(arguments.lngStoreID);
    TextBuffer element;
    records::appendElement(element, records::Create, {state, &arguments});
    state.storeElement = element.view();
}

void AddAdditionalParameters(State& state, const arguments::AddAdditionalParameters& arguments) {
    if (state.storeElement.empty()) {
        throw Error(applicationError, records::AddAdditionalParameters.source(),
                    u"This function can only be called after the store has been created.");
    }
    TextBuffer text;
    text.append(state.storeElement);
    records::AddAdditionalParameters.writeAttributes(text, records::AddAdditionalParameters, {state, &arguments});
    // The blank before the bracket is part of the format.
    text.append(u" >");
    appendToTempFile(state, text.view(), firstPacket, true);
    state.storeElement.clear();
}

void AddEnvelope(State& state, const arguments::AddEnvelope& arguments) {
    TextBuffer envelope;
    records::appendElement(envelope, records::AddEnvelope, {state, &arguments});
    state.documentHead.append(u"\r\n").append(envelope.view());
    appendToTempFile(state, envelope.view(), firstPacket, false);
}

}  // namespace quill1xml::store::bodies
