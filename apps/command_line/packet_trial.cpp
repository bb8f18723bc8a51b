#include "command_line/packet_trial.hpp"

#include "quill1xml/schema.hpp"
#include "quill1xml/text.hpp"
#include "text/numbers.hpp"

#include <algorithm>
#include <utility>

namespace quill1xml::cli {
namespace {

/// Characters held back of all packet files together.
constexpr std::size_t mostHeld = 1 << 18;

Text nameOf(Text path) { return path.substr(path.find_last_of(u"\\/") + 1); }

/// Its root is in it, so that it can be looked at only as a whole.
bool isFirst(Text path) { return nameOf(path) == u"WebStore1.tmp"; }

/// A packet file's path without its number.
Text kindOf(Text path) {
    path.remove_suffix(Text(u".tmp").size());
    return path.substr(0, path.find_last_not_of(u"0123456789") + 1);
}

Text elementIn(Text text) {
    const std::size_t start = text.find(u'<');
    if (start == Text::npos) return {};
    text.remove_prefix(start + 1);
    return text.substr(0, text.find_first_of(u" />\r\n\t"));
}

}  // namespace

std::string_view codeOf(Problem::Code code) {
    switch (code) {
        case Problem::Code::notWellFormed: return "not-well-formed";
        case Problem::Code::notValid: return "not-valid";
        case Problem::Code::torn: return "torn";
        case Problem::Code::notSent: return "not-sent";
        case Problem::Code::schema: return "schema";
    }
    return {};
}

PacketTrial::PacketTrial(TrialFiles& files, const Store& store, CheckReport& report, GiveSchema giveSchema)
    : files_(files), store_(store), report_(report), giveSchema_(std::move(giveSchema)) {
    files_.watchedBy(this);
}

void PacketTrial::before(const RecordCall& call) {
    call_ = call;
    wrote_ = false;
}

void PacketTrial::after() {
    const Text parent = automation::parentOf(*call_.method);
    const Text element = parent.empty() ? automation::elementOf(*call_.method) : parent;
    if (!wrote_ && !element.empty()) begun_[std::u16string(element)].push_back(call_);
}

bool PacketTrial::isDue() const { return !complete_.empty() || files_.unwritten() > mostHeld; }

void PacketTrial::examineDue() {
    if (files_.unwritten() > mostHeld) examineAll();
    for (const std::u16string& name : std::exchange(complete_, {})) {
        if (const auto packet = packets_.find(name); packet != packets_.end()) examine(name, packet->second);
    }
}

void PacketTrial::examineAll() {
    std::set<std::u16string> names = std::exchange(complete_, {});
    for (const auto& [kind, name] : current_) names.insert(name);
    // What is wrong with the head shows in every record: it comes first.
    for (const bool first : {true, false}) {
        for (const std::u16string& name : names) {
            const auto packet = packets_.find(name);
            if (packet != packets_.end() && isFirst(name) == first) examine(name, packet->second);
        }
    }
}

void PacketTrial::examine(const std::u16string& name, Packet& packet) {
    const Text text = files_.unwritten(name);
    if (text.size() == packet.examined) return;
    const bool first = isFirst(name);
    giveSchema_(kindOf(nameOf(name)));
    const auto problems = files_.withUnwritten(name, [&] { return store_.check(nameOf(name)); });
    if (first) badHead_ = false;
    for (Problem problem : problems) {
        if (problem.code == Problem::Code::schema) continue;
        if (first) badHead_ = true;
        if (badHead_ && !first && problem.attribute.empty()) continue;
        const std::size_t line = packet.lines.lineOf(problem, text);
        if (problem.record != 0) problem.record += packet.before;
        report_.add({.code = codeOf(problem.code), .problem = problem, .line = line});
    }
    if (first) {
        packet.examined = text.size();
        return;
    }
    packet.before += packet.lines.count();
    packet.lines.clear();
    files_.writeOut(name);
}

void PacketTrial::examineLeft(const std::u16string& name, std::size_t line) {
    // Its own root is not known here any more, so that some root must do.
    const std::u16string nothing;
    giveSchema_(kindOf(name));
    const auto problems = files_.withUnwritten(nothing, [&] { return store_.check(name); });
    for (const Problem& problem : problems) {
        if (problem.code != Problem::Code::schema)
            report_.add({.code = codeOf(problem.code), .problem = problem, .line = line});
    }
}

std::map<std::u16string, std::size_t> PacketTrial::beginnings() const {
    std::map<std::u16string, std::size_t> lines;
    for (const auto& [name, packet] : packets_) lines.emplace(name, packet.firstLine);
    return lines;
}

void PacketTrial::removing(const std::u16string& name) {
    packets_.erase(name);
    complete_.erase(name);
    sent_.erase(name);
    if (isFirst(name)) badHead_ = false;
}

void PacketTrial::writing(const std::u16string& name, std::size_t start, Text text, bool ours) {
    const Text element = elementIn(text);
    Packet& packet = packetOf(name, element);
    if (!ours) {
        addLeft(packet, text);
        return;
    }
    wrote_ = true;
    if (!sent_.empty()) sent_.erase(name);
    if (packet.firstLine == 0) packet.firstLine = call_.line;
    KindTotal& kind = kinds_[packet.kind];
    kind.records += kind.kind == element ? 1 : 0;
    kind.bytes += text.size() * sizeof(char16_t);
    addRecord(packet, start, element, text);
}

PacketTrial::Packet& PacketTrial::packetOf(const std::u16string& name, Text element) {
    const auto known = packets_.find(name);
    if (known != packets_.end()) return known->second;
    std::u16string& current = current_[std::u16string(kindOf(name))];
    if (packets_.contains(current)) complete_.insert(current);
    current = name;
    auto kind = std::ranges::find(kinds_, element, &KindTotal::kind);
    if (kind == kinds_.end()) kind = kinds_.insert(kinds_.end(), {.kind = std::u16string(element)});
    ++kind->packets;
    kind->bytes += sizeof(char16_t);  // the byte-order mark
    return packets_.emplace(name, Packet{.kind = static_cast<std::size_t>(kind - kinds_.begin())}).first->second;
}

void PacketTrial::addLeft(Packet& packet, Text text) {
    const std::size_t first = text.find(u'<');
    const std::u16string element(elementIn(text));
    for (std::size_t start = first; start != Text::npos; start = findTag(text, element, start + 1)) {
        packet.lines.add(start, {});
    }
}

void PacketTrial::addRecord(Packet& packet, std::size_t start, Text element, Text text) {
    const auto begun = begun_.find(element);
    if (begun == begun_.end()) {
        packet.lines.add(start, {&call_, 1});
        addKeys(text, {&call_, 1});
        return;
    }
    std::vector<RecordCall> calls = std::exchange(begun->second, {});
    begun_.erase(begun);
    calls.push_back(call_);
    packet.lines.add(start, calls);
    addKeys(text, calls);
}

const std::vector<std::u16string>& PacketTrial::keyNames(Text element) {
    const auto known = keyNames_.find(element);
    if (known != keyNames_.end()) return known->second;
    std::vector<std::u16string> names;
    for (const std::string& name : keyAttributes(toUtf8(element))) names.push_back(toUtf16(name));
    return keyNames_.emplace(element, std::move(names)).first->second;
}

/// A key is an element's name and its values, and behind them for a part those of the record that it is in.
void PacketTrial::addKeys(Text record, std::span<const RecordCall> calls) {
    const std::size_t start = record.find(u'<');
    // An update repeats a key on purpose.
    if (start == Text::npos || calls.back().method->name.starts_with("Update")) return;
    // Only a record of several calls has parts.
    std::vector<Tag> tags;
    if (calls.size() > 1) {
        tags = tagsIn(record);
    } else {
        tags.push_back(tagAt(record, start));
    }
    std::u16string owner;
    for (auto tag = tags.begin(); tag != tags.end(); ++tag) {
        const std::vector<std::u16string>& names = keyNames(tag->name);
        if (names.empty()) continue;
        key_.assign(tag->name);
        for (const std::u16string& name : names) key_.append(1, u'\0').append(tag->value(name));
        if (tag == tags.begin()) owner = u'\0' + key_;
        const auto nth = static_cast<std::size_t>(std::ranges::count(tags.begin(), tag, tag->name, &Tag::name));
        const std::size_t line = lineOf(calls, tag->name, nth, names.front());
        if (tag != tags.begin()) key_ += owner;
        keys_.add(key_, line);
    }
}

void PacketTrial::tellDuplicates() {
    keys_.tell(
        [this](const std::u16string& key, std::size_t line, std::size_t firstLine) { tell(key, line, firstLine); });
}

void PacketTrial::tell(const std::u16string& key, std::size_t line, std::size_t firstLine) {
    Text rest = key;
    const auto next = [&rest] {
        const std::size_t end = std::min(rest.find(u'\0'), rest.size());
        const Text value = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        return value;
    };
    Problem problem{.severity = Problem::Severity::warning, .element = std::u16string(next())};
    for (const std::u16string& name : keyNames(problem.element)) problem.key.emplace_back(name, next());
    problem.reason = u"line ";
    appendInteger(problem.reason, static_cast<std::int64_t>(firstLine));
    problem.reason.append(rest.empty() ? u" has the same key" : u" has the same key, in the same record");
    report_.add({.code = "duplicate-key", .problem = std::move(problem), .line = line});
}

}  // namespace quill1xml::cli
