// The engine of the record tables: elements, refusals and packets.

#include "quill1xml/text.hpp"
#include "records/record.hpp"
#include "store/perform.hpp"
#include "text/blanks.hpp"
#include "text/letter_case.hpp"
#include "text/numbers.hpp"

#include <algorithm>
#include <limits>

namespace quill1xml::records {
namespace {

/// A message with each "{parameter}" replaced by the parameter's value.
std::u16string fillIn(Text message, const Record& record, const Call& call) {
    std::u16string text;
    for (std::size_t open; (open = message.find(u'{')) != Text::npos;) {
        const std::size_t close = message.find(u'}', open);
        const std::string name = toUtf8(message.substr(open + 1, close - open - 1));
        text.append(message.substr(0, open));
        message.remove_prefix(close + 1);
        const auto parameter = std::ranges::find(record.parameters, name, &Parameter::name);
        const Field field{parameter->type, parameter->offset, true};
        if (field.type == ParameterType::date) {
            text.append(call.store.environment.system->generalDate(call.date(field)));
        } else {
            appendInteger(text, static_cast<std::int64_t>(call.number(field)));
        }
    }
    return text.append(message);
}

/// Whether a name ends in .gif, .jpg or .jpeg, whatever the case.
bool isImageName(Text name) {
    const auto endsIn = [name](Text suffix) {
        return name.size() >= suffix.size() && equalIgnoringCase(name.substr(name.size() - suffix.size()), suffix);
    };
    return endsIn(u".gif") || endsIn(u".jpg") || endsIn(u".jpeg");
}

bool textPasses(const Test& test, Text text) {
    switch (test.kind) {
        case Test::Kind::notDefault: return text != notGiven;
        case Test::Kind::length: return text.size() >= test.minimum && text.size() <= test.maximum;
        case Test::Kind::oneOf: return std::ranges::find(test.words, text) != test.words.end();
        case Test::Kind::notBlank: return !trimBlanks(text).empty();
        default: return isImageName(text);
    }
}

bool numberPasses(const ResolvedTest& resolved, const Call& call) {
    const Test& test = resolved.test;
    const double value = call.number(resolved.field);
    switch (test.kind) {
        case Test::Kind::range: return value >= test.low && value <= test.high;
        case Test::Kind::above: return value > test.low;
        case Test::Kind::otherThan: return value != test.low;
        case Test::Kind::notLowest: return value != mostNegative && value != std::numeric_limits<double>::lowest();
        case Test::Kind::isFalse: return value == 0;
        case Test::Kind::notBefore: return value >= call.number(resolved.other);
        default: return value != 0;
    }
}

void appendAttribute(TextBuffer& out, const Row& row, const Call& call) {
    out.endAt(row.opening.write(out.room(Opening::longest)));
    if (row.rendering != nullptr) {
        row.rendering->append(out, call, row.field);
    } else {
        out.append(row.fixed);
    }
    out.push(u'"');
}

}  // namespace

bool passes(const ResolvedTest& resolved, const Call& call) {
    return resolved.test.readsText() ? textPasses(resolved.test, call.text(resolved.field))
                                     : numberPasses(resolved, call);
}

bool holds(const Row& row, const Call& call) {
    for (const ResolvedTest& test : row.conditions()) {
        if (passes(test, call) == row.any) return row.any;
    }
    return !row.any;
}

std::u16string Record::source() const {
    if (!shape.source.empty()) return std::u16string(shape.source);
    return u"Quill1XML.Store." + toUtf16(method) + u"()";
}

void refuse(const Record& record, const Row& row, const Call& call) {
    throw Error(applicationError, row.source.empty() ? record.source() : std::u16string(row.source),
                fillIn(row.message, record, call));
}

void appendAttributes(TextBuffer& out, const Record& record, const Call& call) {
    bool formerWritten = false;
    for (const Row& row : record.rows) {
        const bool holding = holds(row, call);
        if (row.isChecked() && !holding) refuse(record, row, call);
        const bool written = row.writes() && holding && !(row.kind == RowKind::otherwise && formerWritten);
        if (written) appendAttribute(out, row, call);
        formerWritten = written;
    }
    if (call.store.watchesValues()) tellLeftOut(record, call);
}

void appendElement(TextBuffer& out, const Record& record, const Call& call) {
    if (!record.shape.continuesStartTag) {
        out.push(u'<');
        out.append(record.element);
        out.append(record.shape.afterName);
    }
    appendAttributes(out, record, call);
    out.append(record.shape.end);
}

void write(store::State& store, const Record& record, const void* arguments) {
    const Call call{store, arguments};
    if (record.shape.prologue != nullptr) record.shape.prologue(call, record);
    store.element.clear();
    appendElement(store.element, record, call);
    record.shape.delivery(store, record, store.element.view());
}

void appendToPacket(store::State& store, const Record& record, std::u16string_view element) {
    store::PacketCounter& counter = store.counters[record.counter()];
    if (counter.records == std::numeric_limits<Long>::max()) throw runtimeError(RuntimeError::overflow);
    ++counter.records;
    store::append(store, record.packet(store, std::int64_t{counter.packets} + 1), element);
    if (counter.records == store.packetSize) {
        ++counter.packets;
        counter.records = 0;
    }
}

}  // namespace quill1xml::records

namespace quill1xml::store {

#define METHOD(dispid, Result, Name, summary)
#define RECORD(dispid, Name, summary) \
    void perform(State& state, const arguments::Name& arguments) { records::write(state, records::Name, &arguments); }
#include "quill1xml/methods/all.def"

}  // namespace quill1xml::store
