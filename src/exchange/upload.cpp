// Send: posts packets and documents and reads the receipts.

#include "exchange/last_failure.hpp"
#include "exchange/packet_note.hpp"
#include "exchange/pending.hpp"
#include "exchange/receipt.hpp"
#include "exchange/send_order.hpp"
#include "store/document.hpp"
#include "store/going_on.hpp"
#include "store/packets.hpp"
#include "store/perform.hpp"
#include "store/required.hpp"
#include "text/blanks.hpp"
#include "text/numbers.hpp"

#include <limits>
#include <utility>

namespace quill1xml::store {
namespace {

constexpr Text sendSource = u"Quill1XML.Store.Send()";

/// What sending asks of a document stands in its head, which packets behind the first have in common.
class Head {
public:
    /// A document that tells what one that begins with this text tells: another one only where the text changed.
    const ports::Document& of(const State& state, Text text) {
        if (text != text_) {
            text_ = text;
            const Text pieces[] = {text, u"</Store>"};
            ports::ParseError error;
            document_ = state.environment.xml->parse(pieces, nullptr, error);
            if (document_ != nullptr && document_->select(u"Store/Envelope").empty()) document_.reset();
        }
        return document_ == nullptr ? *state.document : *document_;
    }

private:
    std::u16string text_;
    std::unique_ptr<ports::Document> document_;
};

std::u16string destination(const ports::Document& head, Text given) {
    if (!given.empty()) return std::u16string(given);
    const auto envelope = requiredElement(head, u"Store/Envelope");
    auto url = envelope->attribute(u"DestinationURL");
    if (!url) throw Error(applicationError, sendSource, u"No Destination URL has been specified.");
    return *std::move(url);
}

void archive(const State& state, const ports::Document& head, Text folder, Long importNumber) {
    const auto root = requiredElement(head, u"Store");
    std::u16string fileName(folder);
    fileName.append(u"\\WebStore");
    appendInteger(fileName, toLong(requiredAttribute(*root, u"StoreID")));
    fileName.push_back(u'-');
    appendInteger(fileName, importNumber);
    fileName.append(u".xml");
    state.document->save(fileName);
}

/// A document of the host's own, of which no journal knows.
struct OwnDocument {
    static void posting() {}
    static void failed(const Error&) {}
    static void accepted(Long) {}
};

/// Posts the document that a function loads, and notes what becomes of it; returns the server's import number. Another
/// function tells a document of the same head.
template <class Load, class Headed, class Note>
Long sendFile(State& state, Text destinationUrl, Text archivePath, Load load, Headed headed, Note& note) {
    return logged(state, labels::sendFile, [&] {
        load();
        if (!state.schemaValid) {
            throw Error(applicationError, sendSource,
                        u"The document is not Schema Valid. Please check your event log for details.");
        }
        const std::u16string url = destination(headed(), destinationUrl);
        const std::string body = state.document->utf8();
        note.posting();
        Long importNumber = 0;
        try {
            auto reply = exchange::post(state, url, body);
            const auto receipt = exchange::readReceipt(*state.environment.xml, std::move(reply));
            importNumber = toLong(requiredAttribute(*receipt, u"ImportNumber"));
        } catch (const Error& error) {
            note.failed(error);
            throw;
        }
        note.accepted(importNumber);
        state.answer = {};  // what fails from here on is not the server's fault
        if (!archivePath.empty()) archive(state, headed(), archivePath, importNumber);
        return importNumber;
    });
}

/// Has the packets of a kind written to the disk while the first of them are on their way.
void startFlushing(const State& state, Text kind) {
    const auto starts = [&](Integer packet) {
        return state.environment.files->startFlush(path(state, {.kind = kind, .number = packet}));
    };
    for (Integer packet = 1; packet < std::numeric_limits<Integer>::max() && starts(packet); ++packet) continue;
}

void uploaded(State& state, const std::u16string& name, Long importNumber) {
    if (!state.uploadResult.empty()) state.uploadResult.push_back(u',');
    state.uploadResult.append(name).push_back(u' ');
    appendInteger(state.uploadResult, importNumber);
}

void sendPacket(State& state, const arguments::SendTempFile& arguments, const std::u16string& name, Head& head) {
    const std::u16string path = state.tempFilePath + name;
    const std::u16string content = state.environment.files->readText(path);
    if (trimBlanks(content, u" \t\r\n").empty()) return;

    const bool hasHead = name == fileName(firstPacket);
    exchange::PacketNote note(state, name, content);
    if (const auto importNumber = note.acceptedBefore()) {
        uploaded(state, name, *importNumber);
        return;
    }
    const Text pieces[] = {hasHead ? Text() : Text(state.documentHead), hasHead ? Text() : Text(u"\r\n"), content,
                           u"</Store>"};
    const auto load = [&] {
        loadText(state, pieces, content);
        // After a power cut the files tell what the store may have.
        state.environment.files->flush(path);
    };
    const auto headed = [&]() -> const ports::Document& {
        return hasHead ? *state.document : head.of(state, state.documentHead);
    };
    const Long importNumber =
        sendFile(state, arguments.strDestinationURL, arguments.strArchivePath, load, headed, note);
    uploaded(state, name, importNumber);
    if (state.packetUploaded) state.packetUploaded(name, importNumber);
    note.requireWritten();
}

}  // namespace

void perform(State& state, const arguments::SendTempFile& arguments) {
    exchange::accounted(state, [&] {
        const SchemaSource::Sending sending(state.schema);
        state.packetUnderWay.clear();
        if (state.journal) {
            beginSending(state, exchange::packetsOf(state, arguments.strTempFile), u"Quill1XML.Store.SendTempFile()");
        }
        startFlushing(state, arguments.strTempFile);
        Head head;
        Integer packet = 1;
        for (std::u16string name; !(name = exchange::findPacket(state, arguments.strTempFile, packet)).empty();
             ++packet) {
            state.packetUnderWay = name;
            sendPacket(state, arguments, name, head);
            state.packetUnderWay.clear();
            if (packet == std::numeric_limits<Integer>::max()) throw runtimeError(RuntimeError::overflow);
        }
    });
}

std::u16string perform(State& state, const arguments::Send& arguments) {
    if (!arguments.strWebStoreSchemaSource.empty()) state.schemaSource = arguments.strWebStoreSchemaSource;
    state.uploadResult.clear();
    state.packetUnderWay.clear();
    state.doubts.clear();
    exchange::accounted(state, [&] {
        const SchemaSource::Sending sending(state.schema);
        if (arguments.strSource == u"Memory") {
            if (state.journal) beginSending(state, exchange::pendingPackets(state).toSend, sendSource);
            for (const std::u16string& kind : exchange::sendOrder(state)) {
                run(state, arguments::SendTempFile{.strTempFile = kind,
                                                   .strDestinationURL = arguments.strDestinationURL,
                                                   .strWebStoreSource = arguments.strWebStoreSource,
                                                   .strArchivePath = arguments.strArchivePath});
            }
            run(state, arguments::CleanupTempFiles{});
        } else if (arguments.strSource == u"File") {
            // A document of the host's own is not archived.
            OwnDocument note;
            const auto load = [&] { loadFile(state, arguments.strWebStoreSource); };
            const auto headed = [&]() -> const ports::Document& { return *state.document; };
            appendInteger(state.uploadResult, sendFile(state, arguments.strDestinationURL, {}, load, headed, note));
        }
    });
    return state.uploadResult;
}

}  // namespace quill1xml::store
