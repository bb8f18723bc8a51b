#include "command_line/record_lines.hpp"

#include <algorithm>
#include <optional>

namespace quill1xml::cli {
namespace {

/// An element of a record: its name and how many of that name stand before it.
struct Place {
    Text element;
    std::size_t nth = 0;
};

/// The value of a problem is shortened, or hidden.
bool isValueOf(const Problem& problem, Text value) {
    constexpr Text ellipsis = u"\u2026";
    Text shown = problem.value;
    if (shown == u"***") return true;
    if (!shown.ends_with(ellipsis)) return shown == value;
    shown.remove_suffix(ellipsis.size());
    return value.starts_with(shown);
}

std::optional<Place> placeOf(const Problem& problem, Text record) {
    const std::vector<Tag> tags = tagsIn(record);
    for (auto tag = tags.begin(); tag != tags.end(); ++tag) {
        const bool has = std::ranges::any_of(tag->attributes, [&problem](const Tag::Attribute& attribute) {
            return attribute.name == problem.attribute && isValueOf(problem, attribute.value);
        });
        if (!has) continue;
        return Place{tag->name, static_cast<std::size_t>(std::ranges::count(tags.begin(), tag, tag->name, &Tag::name))};
    }
    return std::nullopt;
}

}  // namespace

std::size_t lineOf(std::span<const RecordCall> calls, Text element, std::size_t nth, Text attribute) {
    if (calls.empty()) return 0;
    for (const RecordCall& call : calls) {
        if (automation::elementOf(*call.method) != element) continue;
        if (!attribute.empty() && !automation::hasAttribute(*call.method, attribute)) continue;
        if (nth-- == 0) return call.line;
    }
    return calls.back().line;
}

void RecordLines::add(std::size_t start, std::span<const RecordCall> calls) {
    records_.push_back({start, calls_.size()});
    calls_.insert(calls_.end(), calls.begin(), calls.end());
}

std::size_t RecordLines::lineOf(const Problem& problem, Text text) const {
    if (records_.empty()) return 0;
    const bool whole = problem.record == 0;
    const std::size_t number = whole ? 0 : std::min(problem.record, records_.size()) - 1;
    const bool last = whole || number + 1 == records_.size();
    const std::size_t end = last ? text.size() : records_[number + 1].start;
    const std::size_t firstCall = records_[number].firstCall;
    const std::size_t endCall = last ? calls_.size() : records_[number + 1].firstCall;
    const std::span calls = std::span(calls_).subspan(firstCall, endCall - firstCall);
    if (calls.empty()) return 0;
    if (problem.attribute.empty()) return calls.back().line;
    const Text record = text.substr(records_[number].start, end - records_[number].start);
    const std::optional<Place> place = placeOf(problem, record);
    return place ? cli::lineOf(calls, place->element, place->nth, problem.attribute) : calls.back().line;
}

void RecordLines::clear() {
    std::vector<Record>().swap(records_);  // with its memory
    std::vector<RecordCall>().swap(calls_);
}

}  // namespace quill1xml::cli
