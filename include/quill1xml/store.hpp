// Store: publishes a host's records to a web store, and fetches what shoppers did there.
#pragma once

#include "quill1xml/arguments.hpp"
#include "quill1xml/entities.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/ports.hpp"
#include "quill1xml/problem.hpp"
#include "quill1xml/results.hpp"
#include "quill1xml/types.hpp"
#include "quill1xml/under_way.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quill1xml {

namespace store {
struct State;
}

/// One publishing job: settings, packet files and sending. One object serves one job and one thread.
///
/// Every method takes its arguments by name, throws quill1xml::Error on failure and writes the failure to the event
/// log first. Nothing is rolled back: packet files already written stay.
class Store {
public:
    Store();

    /// A store that reaches the outside through the given environment; every member of it must be set.
    explicit Store(ports::Environment environment);

    ~Store();

    /// A Store that was moved from may only be assigned to and destroyed.
    Store(Store&& other) noexcept;
    Store& operator=(Store&& other) noexcept;
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    /// Sets who hears of uploaded packets; an empty function for nobody.
    void onPacketUploaded(PacketUploaded listener);

    /// Sets who hears of values that are left out; an empty function for nobody.
    void onValueLeftOut(ValueLeftOut listener);

    /// The elements that were begun and not locked yet, and that are lost without it: "Product", "Order", "Quote".
    std::vector<std::u16string> openRecords() const;

    /// The job that the journal in use keeps, where it is not over.
    std::optional<UnfinishedJob> unfinishedJob() const;

    /// Looks at the packet files on disk. Throws when the folder cannot be read.
    PendingPackets pendingPackets() const;

    /// What is being exchanged with a server, or was when a call failed.
    UnderWay underWay() const;

    /// Looks for what is wrong with the packet files, as CheckPackets does. Changes and sends nothing. Throws when the
    /// folder cannot be read.
    std::vector<Problem> check() const;

    /// As check, of one packet file by its name without folder: whether Send would find it is not looked at.
    std::vector<Problem> check(Text packet) const;

#define METHOD(dispid, Result, Name, summary) Result Name(const arguments::Name& arguments = {});
#include "quill1xml/methods/all.def"

private:
    std::unique_ptr<store::State> state_;
};

}  // namespace quill1xml
