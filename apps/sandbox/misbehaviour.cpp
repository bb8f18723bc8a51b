#include "misbehaviour.hpp"

#include "answers.hpp"
#include "receipt.hpp"

#include <charconv>
#include <limits>
#include <stdexcept>

namespace quill1xml::sandbox {
namespace {

constexpr std::int64_t longestDelay = 3600'000;

std::int64_t integerIn(const Json& json, const char* name, std::int64_t usual, std::int64_t low, std::int64_t high) {
    const auto found = json.find(name);
    if (found == json.end()) return usual;
    if (found->is_number_integer()) {
        const auto value = found->get<std::int64_t>();
        if (value >= low && value <= high) return value;
    }
    throw std::invalid_argument(std::string(name) + " must be an integer from " + std::to_string(low) + " to " +
                                std::to_string(high));
}

std::string textIn(const Json& json, const char* name, const char* usual) {
    const auto found = json.find(name);
    if (found == json.end()) return usual;
    if (!found->is_string()) throw std::invalid_argument(std::string(name) + " must be a text");
    return found->get<std::string>();
}

int statusIn(const Json& json, int usual) { return static_cast<int>(integerIn(json, "status", usual, 200, 599)); }

Misbehaviour answer(Reply reply) { return {Misbehaviour::Action::answer, {}, std::move(reply)}; }

Misbehaviour refuse(const Json& json) {
    using Limits = std::numeric_limits<std::int32_t>;
    const auto number =
        integerIn(json, "number", static_cast<std::int32_t>(RefusalNumber::onPurpose), Limits::min(), Limits::max());
    const Refusal refusal(static_cast<std::int32_t>(number), textIn(json, "source", "Import"),
                          textIn(json, "description", "Refused on purpose."));
    return answer({200, xmlType, refusal.receipt()});
}

Misbehaviour httpError(const Json& json) {
    const int status = statusIn(json, 500);
    return answer({status, "text/plain; charset=utf-8", "HTTP status " + std::to_string(status) + " on purpose.\n"});
}

Misbehaviour delay(const Json& json) {
    return {Misbehaviour::Action::proceed,
            std::chrono::milliseconds(integerIn(json, "milliseconds", 1000, 0, longestDelay)),
            {}};
}

/// An action, what makes it, and the JSON name of the number that its option takes after the request's.
struct ActionRow {
    std::string_view name;
    const char* optionValue;
    Misbehaviour (*make)(const Json& json);
};

const ActionRow actions[] = {
    {"refuse", "number", refuse},
    {"rubbish", nullptr,
     [](const Json&) {
         return answer({200, "text/html", "<html><p>Rubbish & no XML"});
     }},
    {"http-error", "status", httpError},
    {"answer", nullptr,
     [](const Json& json) {
         return answer({statusIn(json, 200), textIn(json, "type", xmlType), textIn(json, "body", "")});
     }},
    {"close", nullptr,
     [](const Json&) {
         return Misbehaviour{Misbehaviour::Action::close, {}, {}};
     }},
    {"hang", nullptr,
     [](const Json&) {
         return Misbehaviour{Misbehaviour::Action::hang, {}, {}};
     }},
    {"delay", "milliseconds", delay},
};

const ActionRow& actionNamed(std::string_view name) {
    for (const ActionRow& row : actions)
        if (row.name == name) return row;
    throw std::invalid_argument("Unknown action \"" + std::string(name) + '"');
}

std::int64_t toInteger(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        throw std::invalid_argument('"' + std::string(text) + "\" is not a number");
    return number;
}

/// Cuts the text up to the next colon off the front.
std::string_view cut(std::string_view& text) {
    const std::size_t colon = text.find(':');
    const std::string_view front = text.substr(0, colon);
    text = colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
    return front;
}

}  // namespace

PlannedMisbehaviour plannedFromJson(const Json& json) {
    if (!json.is_object()) throw std::invalid_argument("A JSON object is expected");
    PlannedMisbehaviour planned;
    planned.endpoint = textIn(json, "endpoint", "/upload");
    const auto upload = json.find("upload");
    if (upload != json.end() && *upload != "next")
        planned.request =
            static_cast<std::uint64_t>(integerIn(json, "upload", 0, 1, std::numeric_limits<std::int64_t>::max()));
    planned.misbehaviour = actionNamed(textIn(json, "action", "")).make(json);
    return planned;
}

PlannedMisbehaviour plannedFromOption(const std::string& action, std::string_view text) {
    Json json = {{"action", action}};
    if (text.starts_with('/')) json["endpoint"] = cut(text);
    const bool hasValue = text.find(':') != std::string_view::npos;
    json["upload"] = toInteger(cut(text));
    if (hasValue) {
        const char* name = actionNamed(action).optionValue;
        if (name == nullptr) throw std::invalid_argument("No value may follow the request's number");
        json[name] = toInteger(text);
    }
    return plannedFromJson(json);
}

std::uint64_t MisbehaviourPlan::add(const PlannedMisbehaviour& planned) {
    const std::lock_guard lock(mutex_);
    std::uint64_t request = planned.request.value_or(counts_[planned.endpoint] + 1);
    if (!planned.request)
        while (planned_.contains({planned.endpoint, request})) ++request;
    planned_[{planned.endpoint, request}] = planned.misbehaviour;
    return request;
}

Misbehaviour MisbehaviourPlan::next(const std::string& endpoint) {
    const std::lock_guard lock(mutex_);
    const auto node = planned_.extract({endpoint, ++counts_[endpoint]});
    return node.empty() ? Misbehaviour() : node.mapped();
}

}  // namespace quill1xml::sandbox
