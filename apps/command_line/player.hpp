// Calls of a job, made one after the other on one Store.
#pragma once

#include "automation/classes.hpp"
#include "command_line/exchanges.hpp"
#include "command_line/job.hpp"
#include "command_line/losses.hpp"
#include "command_line/packet_folders.hpp"
#include "quill1xml/store.hpp"

#include <nlohmann/json.hpp>

#include <functional>
#include <set>
#include <string>

namespace quill1xml::cli {

/// What is being done, for the message of an error.
struct Place {
    std::size_t line = 0;  ///< of the job; 0 for what stands on none
    std::string method{};
};

class Player {
public:
    /// The exchanges and the streams must outlive it.
    Player(Exchanges& exchanges, const Streams& streams, const JobOptions& options);

    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    Store& store() noexcept { return store_; }

    /// The packet files that were sent since the last record was added, or before by the journal in use.
    const std::set<std::u16string>& sent() const noexcept { return sent_; }

    /// Makes a call, with its values by parameter name, and prints its result. Sets the method of the place.
    void call(const automation::Member& member, const nlohmann::json& values, Place& place);

    /// Warns of what is not published when no more calls come.
    void end() { losses_.atEnd(sent_); }

    /// The store notes what becomes of packets in the file, and holds its folder itself.
    void useJournal(Text file);

    /// Does work that returns an exit status. An error is told with the place that it has then, and makes it 1.
    int reporting(const Place& place, const std::function<int()>& work);

private:
    void report(const Place& place, const Error& error);

    /// Before a Send from memory: counts its packets, and warns of those that it would delete unsent.
    void prepareSending();

    /// Counts what the journal knows as accepted among what was sent.
    void takeAccepted();

    void startProgress(const PendingPackets& pending);

    /// Tries again where the transport of a sending failed, as often as that was asked for.
    automation::Value invoke(const automation::Member& member, const void* arguments, const Place& place);

    Exchanges& exchanges_;
    PacketFolders folders_;  ///< held until the store is gone
    Store store_;
    Losses losses_;
    const Streams& streams_;
    const JobOptions options_;
    Progress& progress_;
    std::set<std::u16string> sent_;
};

}  // namespace quill1xml::cli
