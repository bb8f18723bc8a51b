#include "command_line/job_line.hpp"

#include "command_line/harmless_text.hpp"
#include "command_line/json_fault.hpp"
#include "command_line/nearest.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"

#include <algorithm>
#include <set>
#include <string_view>
#include <vector>

namespace quill1xml::cli {
namespace {

using automation::Member;
using nlohmann::json;

/// A line that is no call; the text says what is wrong with it.
Error badLine(std::string_view reason) { return {5, u"quill1xml run", toUtf16(reason)}; }

json parse(const std::string& line) {
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

}  // namespace

json parseJobLine(const std::string& line) {
    json call = parse(line);
    if (call.is_object() && call.size() == 1) return call;
    throw badLine("a line is one object with one member, the method's name: {\"AddTax\":{...}}");
}

const Member& calledMethod(const json& call) {
    const std::string& name = call.begin().key();
    const auto& members = automation::storeClass().members;
    const auto found = std::ranges::find(members, name, &Member::name);
    if (found == members.end()) {
        std::vector<std::string_view> known;
        for (const Member& member : members) known.push_back(member.name);
        throw runtimeError(RuntimeError::unknownMember, toUtf16(unknownName(name, known)));
    }
    if (!call.begin()->is_object()) throw badLine("the arguments are an object of values by parameter name");
    return *found;
}

std::string textOf(const json& values, const char* name) {
    const auto found = values.find(name);
    return found != values.end() && found->is_string() ? found->get<std::string>() : std::string();
}

}  // namespace quill1xml::cli
