// Faults on demand: what a store does wrong, and at which request.
#pragma once

#include "document.hpp"

#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quill1xml::sandbox {

/// What goes back to a client.
struct Reply {
    int status = 200;
    std::string contentType;
    std::string body;
};

/// What happens to one request after the delay.
struct Misbehaviour {
    enum class Action {
        proceed,  ///< the request is served as ever
        answer,   ///< the reply below goes out, and nothing is done
        close,    ///< the connection closes before the body of an answer
        hang,     ///< no answer comes until the server stops
    };

    Action action = Action::proceed;
    std::chrono::milliseconds delay{0};
    Reply reply;
};

/// A misbehaviour and its place.
struct PlannedMisbehaviour {
    std::string endpoint = "/upload";
    std::optional<std::uint64_t> request;  ///< counted from 1 per endpoint; nothing for the next one without a plan
    Misbehaviour misbehaviour;
};

/// Reads {"action": ..., "endpoint": "/upload", "upload": N or "next"} and what the action takes:
/// "refuse" number, source, description; "rubbish"; "http-error" status; "answer" body, status, type; "close"; "hang";
/// "delay" milliseconds. Throws std::invalid_argument that says what is wrong.
PlannedMisbehaviour plannedFromJson(const Json& json);

/// Reads "[/ENDPOINT:]N[:VALUE]" for an action, as the command line has it. Throws std::invalid_argument.
PlannedMisbehaviour plannedFromOption(const std::string& action, std::string_view text);

/// Counts the requests of every endpoint and hands out what was planned for them. May be used from several threads.
class MisbehaviourPlan {
public:
    /// Returns the number of the request that it will happen to. A later plan for the same request replaces the former.
    std::uint64_t add(const PlannedMisbehaviour& planned);

    /// Counts a request and says what happens to it.
    Misbehaviour next(const std::string& endpoint);

private:
    std::mutex mutex_;
    std::map<std::string, std::uint64_t> counts_;
    std::map<std::pair<std::string, std::uint64_t>, Misbehaviour> planned_;
};

}  // namespace quill1xml::sandbox
