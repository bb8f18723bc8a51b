// What a Store keeps between calls.
#pragma once

#include "quill1xml/ports.hpp"
#include "quill1xml/results.hpp"
#include "store/journal.hpp"
#include "store/schema_source.hpp"
#include "text/text_buffer.hpp"
#include "text/xml_text.hpp"

#include <map>
#include <string>

namespace quill1xml::store {

/// The packet counters of one record kind, or of the kinds that share them.
struct PacketCounter {
    Long records = 0;  ///< written since the last packet boundary
    Long packets = 0;  ///< completed; the current packet is this plus 1
};

/// What a server answered, as much as an account of a failure shows.
struct Answer {
    std::u16string url{};
    int status = 0;  ///< 0 before there is an answer
    std::string contentType{};
    std::string beginning{};
    bool notReached = false;  ///< nothing of what was posted left
};

struct State {
    explicit State(ports::Environment given);

    ports::Environment environment;
    XmlText xmlText;
    std::u16string decimalSeparator;
    PacketUploaded packetUploaded;
    ValueLeftOut valueLeftOut;
    bool strict = false;  ///< a value left out is an error

    bool watchesValues() const { return strict || valueLeftOut; }

    std::u16string tempFilePath;  ///< ends in "\" once set
    Long storeId = 0;
    Long packetSize = 0;  ///< 0 until set: packets never fill
    std::map<std::u16string_view, PacketCounter> counters;

    std::u16string storeElement;  ///< the root start tag without ">", from Create to AddAdditionalParameters
    std::u16string documentHead;  ///< what every packet but the first begins with
    std::u16string schemaSource;
    SchemaSource schema;

    std::unique_ptr<ports::Document> document;  ///< the document loaded last
    bool documentLoaded = false;
    bool schemaValid = false;
    std::u16string uploadResult;    ///< "file number,file number", cleared by Send
    std::u16string packetUnderWay;  ///< the packet file that is being sent, or that a Send failed on
    Answer answer;                  ///< to what was posted last
    std::u16string lastFailure;     ///< an account of the exchange, or the parameter list, that failed last
    std::u16string doubts;          ///< a line for each packet that may have arrived twice

    std::unique_ptr<Journal> journal;         ///< null without one
    std::unique_ptr<ports::FolderHold> hold;  ///< on the packet folder, while there is a journal
    std::u16string heldPath;                  ///< the folder as the host named it

    // Records that are built over several calls; an empty header means that none is open.
    TextBuffer openProduct;
    std::u16string productAttributes;
    std::u16string productPromotions;
    std::u16string openOrder;
    std::u16string orderFieldValues;
    std::u16string orderLines;
    std::u16string openQuote;
    std::u16string quoteLines;
    std::u16string openExternalOrder;  ///< its number
    std::u16string openDebtor;         ///< its id

    TextBuffer element;       ///< buffer of the record being written
    std::u16string fileName;  ///< buffer of its packet file's name
};

}  // namespace quill1xml::store
