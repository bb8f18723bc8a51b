// Store: publishes a host's records to a web store, and fetches what shoppers did there.
#pragma once

#include "quill1xml/arguments.hpp"
#include "quill1xml/entities.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/types.hpp"

#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace quill1xml {

namespace platform {
struct Environment;
}
namespace store {
struct State;
}

/// What a download returns, by its return type: "Collection", "XMLDOMDocument" or "XMLString".
template <class Item>
using Received = std::variant<std::vector<Item>, Document, std::u16string>;

/// What a Send from memory would do with the packet files of a store, by file name without folder.
struct PendingPackets {
    std::vector<std::u16string> toSend;          ///< in the order of sending
    std::vector<std::u16string> toDeleteUnsent;  ///< a gap in the numbers, or a kind that Send does not know
};

/// One publishing job: settings, packet files and sending. One object serves one job and one thread.
///
/// Every method takes its arguments by name, throws quill1xml::Error on failure and writes the failure to the event
/// log first. Nothing is rolled back: packet files already written stay.
class Store {
public:
    /// Called on the sending thread after each packet that the server accepted: the packet's file name without folder,
    /// and the import number that the server gave it.
    using PacketUploaded = std::function<void(Text strTempFileName, Long lngImportNumber)>;

    Store();

    /// A store that reaches the outside through the given environment; every member of it must be set.
    explicit Store(platform::Environment environment);

    ~Store();
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    /// Sets who hears of uploaded packets; an empty function for nobody. An exception of the listener ends Send.
    void onPacketUploaded(PacketUploaded listener);

    /// Looks at the packet files on disk. Throws when the folder cannot be read.
    PendingPackets pendingPackets() const;

#define METHOD(dispid, Result, Name, summary, ...) Result Name(const arguments::Name& arguments = {});
#include "quill1xml/methods/all.def"

private:
    std::unique_ptr<store::State> state_;
};

}  // namespace quill1xml
