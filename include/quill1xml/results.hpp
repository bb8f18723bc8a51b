// What methods of Store return and tell beyond single values.
#pragma once

#include "quill1xml/node.hpp"
#include "quill1xml/types.hpp"

#include <functional>
#include <string>
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

/// Called on the sending thread after each packet that the server accepted: the packet's file name without folder,
/// and the import number that the server gave it. An exception of the listener ends Send.
using PacketUploaded = std::function<void(Text strTempFileName, Long lngImportNumber)>;

}  // namespace quill1xml
