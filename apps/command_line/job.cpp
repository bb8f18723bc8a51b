#include "command_line/job.hpp"

#include "automation/classes.hpp"
#include "command_line/error_text.hpp"
#include "command_line/harmless_text.hpp"
#include "command_line/json_arguments.hpp"
#include "command_line/json_fault.hpp"
#include "command_line/json_values.hpp"
#include "command_line/losses.hpp"
#include "command_line/nearest.hpp"
#include "command_line/packet_folders.hpp"
#include "command_line/progress.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/store.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <ios>
#include <new>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quill1xml::cli {
namespace {

using automation::Member;
using nlohmann::json;

/// A line that is no call; the text says what is wrong with it.
Error badLine(std::string_view reason) { return {5, u"quill1xml run", toUtf16(reason)}; }

/// Parses a line; a name that stands twice in one object is refused rather than half ignored.
json parseLine(const std::string& line) {
    std::vector<std::set<std::string>> names;
    const auto watch = [&names](int, json::parse_event_t event, const json& parsed) {
        if (event == json::parse_event_t::object_start) names.emplace_back();
        if (event == json::parse_event_t::object_end) names.pop_back();
        if (event == json::parse_event_t::key && !names.back().insert(parsed.get<std::string>()).second) {
            throw badLine("\"" + excerpt(parsed.get<std::string>()) + "\" stands twice in one object");
        }
        return true;
    };
    try {
        return json::parse(line, watch);
    } catch (const json::exception& error) {
        throw badLine(faultText(line, error));
    }
}

struct MethodCall {
    const Member* member;
    json arguments;
};

const Member& methodNamed(const std::string& name) {
    const auto& members = automation::storeClass().members;
    const auto found = std::ranges::find(members, name, &Member::name);
    if (found != members.end()) return *found;
    std::vector<std::string_view> known;
    for (const Member& member : members) known.push_back(member.name);
    throw runtimeError(RuntimeError::unknownMember, toUtf16(unknownName(name, known)));
}

/// What is being done, for the message of an error.
struct Place {
    std::size_t line = 0;
    std::string method;
};

class Job {
public:
    Job(const ports::Environment& environment, const Streams& streams, const JobOptions& options)
        : folders_(environment.files, streams.err),
          store_(environment),
          losses_(store_, streams.err, options.verbose),
          streams_(streams),
          progress_(streams.err, streams.terminal) {
        store_.SetStrict({options.strict});
        store_.onPacketUploaded([this](Text name, Long number) {
            sent_.emplace(name);
            progress_.packet(name, number);
        });
    }

    int play() {
        Place place;
        try {
            // A read that fails would otherwise look like the end of the job.
            streams_.in.exceptions(std::ios::badbit);
            for (std::string line; nextLine(line, place);) {
                if (line.find_first_not_of(" \t\r") != std::string::npos) playLine(line, place);
            }
            losses_.atEnd(sent_);
            return 0;
        } catch (const Error& error) {
            report(place, error);
        } catch (const std::ios::failure&) {
            report(place, runtimeError(RuntimeError::deviceIo, u"the job cannot be read on"));
        } catch (const std::bad_alloc&) {
            report(place, runtimeError(RuntimeError::outOfMemory));
        }
        return 1;
    }

private:
    bool nextLine(std::string& line, Place& place) {
        place = {place.line + 1, {}};
        return !std::getline(streams_.in, line).fail();
    }

    void playLine(const std::string& line, Place& place) {
        const json call = parseLine(line);
        if (!call.is_object() || call.size() != 1) {
            throw badLine("a line is one object with one member, the method's name: {\"AddTax\":{...}}");
        }
        place.method = call.begin().key();
        const Member& member = methodNamed(place.method);
        if (!call.begin()->is_object()) throw badLine("the arguments are an object of values by parameter name");

        automation::Arguments arguments(member);
        fillArguments(arguments, member, *call.begin());
        // What is added may go to a packet file that was sent.
        if (member.name.starts_with("Add") || member.name.starts_with("Lock")) sent_.clear();
        folders_.prepare(member, *call.begin(), sent_);
        if (sendsPackets(member, *call.begin())) prepareSending();
        losses_.before(member, place.line);
        const automation::Value result = member.invoke(&store_, arguments.data());
        losses_.after();
        folders_.follow(member, *call.begin());
        progress_.finish();
        if (member.result != automation::ResultType::nothing) {
            streams_.out << nlohmann::ordered_json{{place.method, toJson(result)}}.dump() << std::endl;
        }
    }

    /// Before a Send from memory: counts its packets, and warns of those that it would delete unsent.
    void prepareSending() {
        losses_.beforeSending();
        const PendingPackets pending = store_.pendingPackets();
        progress_.start(pending.toSend.size());
        for (const std::u16string& name : pending.toDeleteUnsent) {
            if (sent_.contains(name)) continue;
            streams_.err << "warning: Send will delete " << excerpt(name)
                         << " unsent: its number follows a gap, or Send does not know its kind (use SendTempFile)"
                         << std::endl;
        }
    }

    void report(const Place& place, const Error& error) {
        progress_.finish();
        streams_.err << "line " << place.line << ": ";
        if (!place.method.empty()) streams_.err << excerpt(place.method) << ": ";
        streams_.err << errorText(error, store_.LastFailure()) << std::endl;
    }

    PacketFolders folders_;  ///< held until the store is gone
    Store store_;
    Losses losses_;
    const Streams& streams_;
    Progress progress_;
    std::set<std::u16string> sent_;  ///< packet files, since the last record
};

}  // namespace

int playJob(const ports::Environment& environment, const Streams& streams, const JobOptions& options) {
    return Job(environment, streams, options).play();
}

}  // namespace quill1xml::cli
