#include "exchange/check.hpp"

#include "exchange/pending.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/text.hpp"
#include "records/elements.hpp"
#include "store/document_head.hpp"
#include "store/packets.hpp"
#include "store/perform.hpp"
#include "store/torn_end.hpp"
#include "text/blanks.hpp"
#include "text/numbers.hpp"
#include "text/tags.hpp"

#include <algorithm>
#include <memory>
#include <utility>

namespace quill1xml::exchange {
namespace {

using store::State;

constexpr Text xmlBlanks = u" \t\r\n";
constexpr std::size_t longestValue = 60;

std::u16string shortened(Text value) {
    if (value.size() <= longestValue) return std::u16string(value);
    const bool splits = (value[longestValue - 1] & 0xFC00) == 0xD800;
    return std::u16string(value.substr(0, longestValue - (splits ? 1 : 0))) + u"\u2026";
}

bool isDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
bool isHexDigit(char16_t c) { return isDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F'); }

/// Whether a text after "&" begins with a reference that documents may have.
bool isReference(Text text) {
    for (const Text known : {u"amp;", u"lt;", u"gt;", u"quot;", u"apos;"}) {
        if (text.starts_with(known)) return true;
    }
    if (!text.starts_with(u'#')) return false;
    const bool hexadecimal = text.starts_with(u"#x");
    text.remove_prefix(hexadecimal ? 2 : 1);
    const auto end = std::ranges::find_if_not(text, hexadecimal ? isHexDigit : isDigit);
    return end != text.begin() && end != text.end() && *end == u';';
}

/// Why a value cannot stand in a document as it is written; empty when it can.
Text faultOf(Text value) {
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char16_t c = value[i];
        const bool isPair = i + 1 < value.size() && (value[i + 1] & 0xFC00) == 0xDC00;
        if (c == u'&' && !isReference(value.substr(i + 1))) {
            return u"\"&\" begins a reference; write &amp; for the character itself";
        }
        if (c == u'<') return u"\"<\" begins a tag; write &lt; for the character itself";
        if (c < 0x20 && xmlBlanks.find(c) == Text::npos) return u"it holds a control character, which no document may";
        if (c >= 0xFFFE) return u"it holds a code that is no character";
        if ((c & 0xFC00) == 0xDC00 || ((c & 0xFC00) == 0xD800 && !isPair)) return u"it holds half a surrogate pair";
        if ((c & 0xFC00) == 0xD800) ++i;
    }
    return {};
}

/// The attributes that tell one record of an element from the others, with their values in a tag.
std::vector<std::pair<std::u16string, std::u16string>> keyOf(const Tag& tag) {
    std::vector<std::pair<std::u16string, std::u16string>> key;
    for (const records::Record* record : records::allRecords()) {
        if (record->element != tag.name) continue;
        for (const records::Row& row : record->rows) {
            if (row.kind != records::RowKind::key) continue;
            const std::u16string name(row.name());
            key.emplace_back(name, shortened(tag.value(name)));
        }
        break;
    }
    return key;
}

/// Looks for the attribute that is at fault: one that no document may hold, or one that the reason names in quotes.
void findAttribute(Problem& problem, const std::vector<Tag>& tags) {
    for (const Tag& tag : tags) {
        for (const Tag::Attribute& attribute : tag.attributes) {
            const Text fault = problem.code == Problem::Code::notValid ? Text() : faultOf(attribute.value);
            const std::u16string quoted = u"'" + std::u16string(attribute.name) + u"'";
            const auto says = [&problem](const std::u16string& words) {
                return problem.reason.find(words) != std::u16string::npos;
            };
            // Each parser has its own order of these words.
            const bool named = problem.code == Problem::Code::notValid &&
                               (says(u"attribute " + quoted) || says(quoted + u" attribute"));
            if (fault.empty() && !named) continue;
            problem.attribute = attribute.name;
            problem.value = attribute.name == u"Password" ? u"***" : shortened(attribute.value);
            if (!fault.empty()) problem.reason = fault;
            return;
        }
    }
}

/// The text without an attribute of one of its tags.
std::u16string without(Text text, const Tag::Attribute& attribute) {
    const auto placeOf = [&text](const char16_t* character) {
        return static_cast<std::size_t>(character - text.data());
    };
    const std::size_t start = placeOf(attribute.name.data());
    const std::size_t end = placeOf(attribute.value.data()) + attribute.value.size() + 1;
    return std::u16string(text.substr(0, start)).append(text.substr(std::min(end, text.size())));
}

/// Examines one packet file after the other.
class Examiner {
public:
    explicit Examiner(State& state) : state_(state), head_(headOf(state)) { loadSchema(); }

    std::vector<Problem> take() { return std::move(problems_); }

    void file(const std::u16string& name) {
        try {
            packet(name, state_.environment.files->readText(state_.tempFilePath + name));
        } catch (const Error& error) {
            problems_.push_back({.code = Problem::Code::notWellFormed, .packet = name, .reason = error.description()});
        }
    }

    void notSent(std::u16string name) {
        problems_.push_back({.severity = Problem::Severity::warning,
                             .code = Problem::Code::notSent,
                             .packet = std::move(name),
                             .reason = u"Send deletes it unsent: its number follows a gap, or Send does not know its "
                                       u"kind (use SendTempFile)"});
    }

private:
    /// As the store has it, or as the first packet file tells it.
    static std::u16string headOf(const State& state) {
        if (!state.documentHead.empty()) return state.documentHead;
        try {
            return store::headFrom(state.environment.files->readText(store::path(state, store::firstPacket)));
        } catch (const Error&) {
            return {};
        }
    }

    void loadSchema() {
        try {
            if (!state_.schemaSource.empty()) {
                schema_ = state_.schema.load(state_.environment, state_.schemaSource);
                return;
            }
            problems_.push_back({.severity = Problem::Severity::warning,
                                 .code = Problem::Code::schema,
                                 .reason = u"no schema source is known: only what does not load can be found"});
        } catch (const Error& error) {
            problems_.push_back({.code = Problem::Code::schema, .reason = error.description()});
        }
    }

    /// What keeps a part of a packet from being sent; code 0 for nothing.
    ports::ParseError failure(Text head, Text content, Problem::Code& code) const {
        const Text pieces[] = {head, content, u"</Store>"};
        ports::ParseError error;
        const auto document = state_.environment.xml->parse(pieces, schema_, error);
        code = document == nullptr ? Problem::Code::notWellFormed : Problem::Code::notValid;
        return document == nullptr || schema_ == nullptr ? error : document->validate();
    }

    void packet(const std::u16string& name, const std::u16string& content) {
        if (trimBlanks(content, xmlBlanks).empty()) return;
        const bool hasHead = name == store::fileName(store::firstPacket);
        const std::u16string head = hasHead ? std::u16string() : head_ + u"\r\n";
        Problem whole{.packet = name};
        const ports::ParseError error = failure(head, content, whole.code);
        if (!error) return;
        whole.reason = error.reason;
        const std::size_t before = problems_.size();
        if (!hasHead) records(name, head, content);
        if (problems_.size() != before) return;
        if (hasHead) findAttribute(whole, tagsIn(content));
        problems_.push_back(std::move(whole));
    }

    /// Each record of a packet by itself, so that none hides behind another.
    void records(const std::u16string& name, const std::u16string& head, Text content) {
        const std::size_t first = content.find(u'<');
        if (first == Text::npos) return;
        const std::u16string element(tagAt(content, first).name);
        std::size_t number = 0;
        for (std::size_t start = first; start != Text::npos;) {
            const std::size_t next = findTag(content, element, start + 1);
            const Text text = content.substr(start, next == Text::npos ? next : next - start);
            record({.packet = name, .record = ++number, .element = element}, head, text);
            start = next;
        }
        const std::u16string torn = store::accountOfTornEnd(name, content);
        if (torn.empty() || problems_.empty() || problems_.back().record != number) return;
        problems_.back().code = Problem::Code::torn;
        problems_.back().reason = torn;
        problems_.back().attribute.clear();
    }

    void record(Problem problem, Text head, Text text) {
        const ports::ParseError error = failure(head, text, problem.code);
        if (!error) return;
        problem.reason = error.reason;
        const std::vector<Tag> tags = tagsIn(text);
        if (!tags.empty()) problem.key = keyOf(tags.front());
        findAttribute(problem, tags);
        if (problem.code == Problem::Code::notValid && problem.attribute.empty())
            tryAttributes(problem, head, text, tags);
        problems_.push_back(std::move(problem));
    }

    /// Where the parser does not name the attribute: it is the one without which the record is valid.
    void tryAttributes(Problem& problem, Text head, Text text, const std::vector<Tag>& tags) const {
        for (const Tag& tag : tags) {
            for (const Tag::Attribute& attribute : tag.attributes) {
                Problem::Code ignored{};
                if (failure(head, without(text, attribute), ignored)) continue;
                problem.attribute = attribute.name;
                problem.value = shortened(attribute.value);
                return;
            }
        }
    }

    State& state_;
    std::u16string head_;
    std::shared_ptr<ports::Schema> schema_;
    std::vector<Problem> problems_;
};

}  // namespace

std::vector<Problem> check(State& state) {
    store::useDefaultFolder(state);
    Examiner examiner(state);
    for (const std::u16string& name : store::packetFiles(state)) examiner.file(name);
    for (std::u16string& name : pendingPackets(state).toDeleteUnsent) examiner.notSent(std::move(name));
    return examiner.take();
}

std::vector<Problem> checkPacket(State& state, const std::u16string& name) {
    Examiner examiner(state);
    examiner.file(name);
    return examiner.take();
}

}  // namespace quill1xml::exchange

namespace quill1xml {

std::u16string describe(const Problem& problem) {
    const auto quoted = [](Text name, Text value) {
        return std::u16string(name).append(u"=\"").append(value).append(u"\"");
    };
    std::u16string text = problem.packet;
    if (problem.record != 0) {
        text.append(u", record ");
        appendInteger(text, static_cast<std::int64_t>(problem.record));
    }
    if (!text.empty()) text.append(u": ");
    if (!problem.element.empty()) {
        text.append(problem.element);
        for (const auto& [name, value] : problem.key) text.append(u" ").append(quoted(name, value));
        text.append(u": ");
    }
    if (!problem.attribute.empty()) text.append(quoted(problem.attribute, problem.value)).append(u": ");
    return text.append(problem.reason);
}

}  // namespace quill1xml

namespace quill1xml::store {

std::u16string perform(State& state, const arguments::CheckPackets&) {
    std::u16string lines;
    for (const Problem& problem : exchange::check(state)) {
        if (!lines.empty()) lines.append(u"\r\n");
        lines.append(problem.severity == Problem::Severity::error ? u"error: " : u"warning: ")
            .append(describe(problem));
    }
    return lines;
}

}  // namespace quill1xml::store
