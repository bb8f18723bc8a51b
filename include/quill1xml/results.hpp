// What methods of Store return and tell beyond single values.
#pragma once

#include "quill1xml/node.hpp"
#include "quill1xml/types.hpp"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quill1xml {

/// What a download returns, by its return type: "Collection", "XMLDOMDocument" or "XMLString".
template <class Item>
using Received = std::variant<std::vector<Item>, Document, std::u16string>;

/// What a Send from memory would do with the packet files of a store, by file name without folder.
struct PendingPackets {
    std::vector<std::u16string> toSend;          ///< in the order of sending
    std::vector<std::u16string> toDeleteUnsent;  ///< a gap in the numbers, or a kind that Send does not know
};

/// A job whose sending was begun with a journal and that is not over.
struct UnfinishedJob {
    std::u16string folder{};
    Long storeId = 0;
    std::size_t packets = 0;                 ///< that the journal knows
    std::vector<std::u16string> accepted{};  ///< of them, by file name without folder
    bool deletes = false;                    ///< all were sent, and not all packet files are deleted
};

/// A value that a call gave and that did not meet the condition of its attribute, so that the record went without it.
/// An empty text, and a value equal to its parameter's default, counts as not given.
struct LeftOutValue {
    std::string_view method;
    std::string_view parameter;
    std::string_view attribute;
    std::string reason;  ///< "60 characters; must be at most 50 characters"
};

/// Called for each value left out, in the course of the call that gave it. An exception ends the call, and nothing is
/// written.
using ValueLeftOut = std::function<void(const LeftOutValue& value)>;

/// Called on the sending thread after each packet that the server accepted: the packet's file name without folder,
/// and the import number that the server gave it. An exception of the listener ends Send.
using PacketUploaded = std::function<void(Text strTempFileName, Long lngImportNumber)>;

}  // namespace quill1xml
