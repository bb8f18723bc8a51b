#include "command_line/player.hpp"

#include "command_line/archive_folder.hpp"
#include "command_line/error_text.hpp"
#include "command_line/harmless_text.hpp"
#include "command_line/json_arguments.hpp"
#include "command_line/json_values.hpp"
#include "quill1xml/error.hpp"

#include <algorithm>
#include <chrono>
#include <functional>
#include <ios>
#include <new>
#include <string>

namespace quill1xml::cli {
namespace {

using automation::Member;
using nlohmann::json;

constexpr int longestPause = 6;  // as a power of two, in seconds

std::string prefix(const Place& place) {
    std::string text = place.line == 0 ? std::string() : "line " + std::to_string(place.line) + ": ";
    return place.method.empty() ? text : text + excerpt(place.method) + ": ";
}

bool sends(const Member& method) { return method.name == "Send" || method.name == "SendTempFile"; }

}  // namespace

Player::Player(Exchanges& exchanges, const Streams& streams, const JobOptions& options)
    : exchanges_(exchanges),
      folders_(exchanges.environment().files, streams.err),
      store_(exchanges.environment()),
      losses_(store_, streams.err, options.verbose),
      streams_(streams),
      options_(options),
      progress_(exchanges.progress()) {
    store_.SetStrict({options.strict});
    store_.onPacketUploaded([this](Text name, Long number) {
        sent_.emplace(name);
        exchanges_.accepted(number);
        progress_.packet(name, number);
    });
}

void Player::call(const Member& member, const json& values, Place& place) {
    place.method = member.name;
    automation::Arguments arguments(member);
    fillArguments(arguments, member, values);
    // What is added may go to a packet file that was sent.
    if (member.name.starts_with("Add") || member.name.starts_with("Lock")) sent_.clear();
    folders_.prepare(member, values, sent_);
    if (sendsPackets(member, values)) prepareSending();
    requireArchive(archiveFolder(member, values));
    losses_.before(member, place.line);
    const automation::Value result = invoke(member, arguments.data(), place);
    losses_.after();
    folders_.follow(member, values);
    if (member.name == "Resume") takeAccepted();
    progress_.finish();
    if (member.result != automation::ResultType::nothing) {
        streams_.out << nlohmann::ordered_json{{place.method, toJson(result)}}.dump() << std::endl;
    }
    if (!sends(member)) return;
    // With a journal, a sending that went well may still have something to tell.
    const std::u16string account = store_.LastFailure();
    if (!account.empty()) streams_.err << "warning: " << prefix(place) << indented(account) << std::endl;
}

automation::Value Player::invoke(const Member& member, const void* arguments, const Place& place) {
    for (int tries = 0;; ++tries) {
        try {
            automation::Value result;
            exchanges_.during(store_, member.name, [&] { result = member.invoke(&store_, arguments); });
            return result;
        } catch (const Error& error) {
            if (!sends(member) || !exchanges_.transportFailed() || tries >= options_.retries) throw;
            progress_.finish();
            const std::chrono::seconds pause(1LL << std::min(tries, longestPause));
            streams_.err << "warning: " << prefix(place) << excerpt(error.description()) << "; trying again in "
                         << pause.count() << " s (" << tries + 1 << " of " << options_.retries << ")" << std::endl;
            options_.wait(pause);
            if (member.name == "Send") startProgress(store_.pendingPackets());
        }
    }
}

void Player::useJournal(Text file) {
    folders_.leaveToStore();
    store_.UseJournal({file});
}

int Player::reporting(const Place& place, const std::function<int()>& work) {
    try {
        return work();
    } catch (const Error& error) {
        report(place, error);
    } catch (const std::ios::failure&) {
        report(place, runtimeError(RuntimeError::deviceIo, u"the job cannot be read on"));
    } catch (const std::bad_alloc&) {
        report(place, runtimeError(RuntimeError::outOfMemory));
    }
    return 1;
}

void Player::prepareSending() {
    losses_.beforeSending();
    const PendingPackets pending = store_.pendingPackets();
    startProgress(pending);
    for (const std::u16string& name : pending.toDeleteUnsent) {
        if (sent_.contains(name)) continue;
        streams_.err << "warning: Send will delete " << excerpt(name)
                     << " unsent: its number follows a gap, or Send does not know its kind (use SendTempFile)"
                     << std::endl;
    }
}

void Player::takeAccepted() {
    if (const auto job = store_.unfinishedJob()) sent_.insert(job->accepted.begin(), job->accepted.end());
}

void Player::startProgress(const PendingPackets& pending) {
    takeAccepted();
    const auto isLeft = [this](const std::u16string& name) { return !sent_.contains(name); };
    const auto left =
        store_.unfinishedJob() ? std::ranges::count_if(pending.toSend, isLeft) : std::ssize(pending.toSend);
    progress_.start(static_cast<std::size_t>(left));
}

void Player::report(const Place& place, const Error& error) {
    progress_.finish();
    streams_.err << prefix(place) << errorText(error, store_.LastFailure()) << std::endl;
}

}  // namespace quill1xml::cli
