// Send: posts packets and documents and reads the receipts.

#include "exchange/pending.hpp"
#include "exchange/receipt.hpp"
#include "exchange/send_order.hpp"
#include "quill1xml/text.hpp"
#include "store/document.hpp"
#include "store/methods.hpp"
#include "store/packets.hpp"
#include "store/trap.hpp"
#include "text/blanks.hpp"
#include "text/numbers.hpp"

#include <limits>

namespace quill1xml::store {
namespace {

constexpr Text sendSource = u"Quill1XML.Store.Send()";
constexpr std::string_view contentType = "application/x-www-form-urlencoded";

/// The one packet file that begins with the document head itself.
constexpr Text mainPacket = u"WebStore1.tmp";

std::u16string destination(const State& state, Text given) {
    if (!given.empty()) return std::u16string(given);
    const auto envelope = exchange::requiredElement(*state.document, u"Store/Envelope");
    auto url = envelope->attribute(u"DestinationURL");
    if (!url) throw Error(applicationError, sendSource, u"No Destination URL has been specified.");
    return *std::move(url);
}

void archive(const State& state, Text folder, Long importNumber) {
    const auto root = exchange::requiredElement(*state.document, u"Store");
    std::u16string fileName(folder);
    fileName.append(u"\\WebStore");
    appendInteger(fileName, toLong(exchange::requiredAttribute(*root, u"StoreID")));
    fileName.push_back(u'-');
    appendInteger(fileName, importNumber);
    fileName.append(u".xml");
    state.document->save(fileName);
}

/// Loads, posts and archives one document; returns the server's import number.
Long sendFile(State& state, Text destinationUrl, DocumentSource source, Text sourceFile, Text archivePath, Text xml) {
    return trapped(state, {"Method: Quill1XML.Store.SendFile()"}, [&] {
        load(state, source, sourceFile, xml);
        if (!state.schemaValid) {
            throw Error(applicationError, sendSource,
                        u"The document is not Schema Valid. Please check your event log for details.");
        }
        const std::u16string url = destination(state, destinationUrl);
        const auto reply = state.environment.http->post(url, contentType, toUtf8(state.document->xml()));
        const auto receipt = exchange::readReceipt(*state.environment.xml, reply);
        const Long importNumber = toLong(exchange::requiredAttribute(*receipt, u"ImportNumber"));
        if (source == DocumentSource::memory && !archivePath.empty()) archive(state, archivePath, importNumber);
        return importNumber;
    });
}

void sendPacket(State& state, const arguments::SendTempFile& arguments, const std::u16string& name) {
    const std::u16string content = state.environment.files->readText(state.tempFilePath + name);
    if (trimBlanks(content, u" \t\r\n").empty()) return;

    std::u16string text;
    if (name != mainPacket) text.append(state.documentHead).append(u"\r\n");
    text.append(content).append(u"</Store>");
    const Long importNumber = sendFile(state, arguments.strDestinationURL, DocumentSource::memory,
                                       arguments.strWebStoreSource, arguments.strArchivePath, text);
    if (!state.uploadResult.empty()) state.uploadResult.push_back(u',');
    state.uploadResult.append(name).push_back(u' ');
    appendInteger(state.uploadResult, importNumber);
    if (state.packetUploaded) state.packetUploaded(name, importNumber);
}

}  // namespace

void bodies::SendTempFile(State& state, const arguments::SendTempFile& arguments) {
    Integer packet = 1;
    for (std::u16string name; !(name = exchange::findPacket(state, arguments.strTempFile, packet)).empty(); ++packet) {
        sendPacket(state, arguments, name);
        if (packet == std::numeric_limits<Integer>::max()) throw runtimeError(RuntimeError::overflow);
    }
}

std::u16string bodies::Send(State& state, const arguments::Send& arguments) {
    if (!arguments.strWebStoreSchemaSource.empty()) state.schemaSource = arguments.strWebStoreSchemaSource;
    state.uploadResult.clear();
    if (arguments.strSource == u"Memory") {
        for (const std::u16string& kind : exchange::sendOrder(state.storeId)) {
            methods::SendTempFile(state, {.strTempFile = kind,
                                          .strDestinationURL = arguments.strDestinationURL,
                                          .strWebStoreSource = arguments.strWebStoreSource,
                                          .strArchivePath = arguments.strArchivePath});
        }
        methods::CleanupTempFiles(state, {});
    } else if (arguments.strSource == u"File") {
        appendInteger(state.uploadResult, sendFile(state, arguments.strDestinationURL, DocumentSource::file,
                                                   arguments.strWebStoreSource, arguments.strArchivePath, {}));
    }
    return state.uploadResult;
}

}  // namespace quill1xml::store
