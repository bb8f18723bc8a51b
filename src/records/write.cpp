// The engine of the record tables: conditions, attributes and packets.

#include "quill1xml/text.hpp"
#include "records/record.hpp"
#include "store/packets.hpp"
#include "store/state.hpp"
#include "text/blanks.hpp"
#include "text/date.hpp"
#include "text/numbers.hpp"

#include <algorithm>
#include <limits>

namespace quill1xml::records {
namespace {

template <class Member>
const Member& member(const void* arguments, Field field) {
    return *reinterpret_cast<const Member*>(static_cast<const unsigned char*>(arguments) + field.offset);
}

/// The value of a numeric, date or flag parameter.
double numberOf(const void* arguments, Field field) {
    switch (field.type) {
        case Type::integer:
        case Type::variantInteger: return member<Integer>(arguments, field);
        case Type::longInteger: return member<Long>(arguments, field);
        case Type::floating: return member<Double>(arguments, field);
        case Type::boolean: return member<Boolean>(arguments, field) ? 1 : 0;
        case Type::date: return member<Date>(arguments, field).days;
        case Type::currency: return static_cast<double>(member<Currency>(arguments, field).tenThousandths) / 10000;
        case Type::text:
        case Type::variantText:
        case Type::node:
        case Type::nodeList: break;
    }
    throw runtimeError(RuntimeError::internalError, u"a text was read as a number");
}

bool endsInImageSuffix(Text name) {
    std::u16string lower(name);
    std::ranges::transform(lower, lower.begin(), [](char16_t c) {
        return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
    });
    return lower.ends_with(u".gif") || lower.ends_with(u".jpg") || lower.ends_with(u".jpeg");
}

bool passes(const Call& call, const ResolvedTest& resolved) {
    const Test& test = resolved.test;
    const Field field = resolved.field;
    switch (test.kind) {
        case Test::Kind::notDefault: return member<Text>(call.arguments, field) != notGiven;
        case Test::Kind::length: {
            const std::size_t size = member<Text>(call.arguments, field).size();
            return size >= test.minimum && size <= test.maximum;
        }
        case Test::Kind::oneOf:
            return std::ranges::find(test.words, member<Text>(call.arguments, field)) != test.words.end();
        case Test::Kind::notBlank: return !trimBlanks(member<Text>(call.arguments, field)).empty();
        case Test::Kind::imageName: return endsInImageSuffix(member<Text>(call.arguments, field));
        case Test::Kind::range: {
            const double value = numberOf(call.arguments, field);
            return value >= test.low && value <= test.high;
        }
        case Test::Kind::above: return numberOf(call.arguments, field) > test.low;
        case Test::Kind::otherThan: return numberOf(call.arguments, field) != test.low;
        case Test::Kind::notLowest: {
            const double value = numberOf(call.arguments, field);
            return value != mostNegative && value != std::numeric_limits<double>::lowest();
        }
        case Test::Kind::given:
        case Test::Kind::isTrue: return numberOf(call.arguments, field) != 0;
        case Test::Kind::isFalse: return numberOf(call.arguments, field) == 0;
        case Test::Kind::notBefore: return numberOf(call.arguments, field) >= numberOf(call.arguments, resolved.other);
    }
    return false;
}

bool holds(const Call& call, const Row& row) {
    if (row.testCount == 0) return true;
    if (row.testCount == 1) return passes(call, *row.tests);
    const auto conditions = row.conditions();
    const auto test = [&call](const ResolvedTest& resolved) { return passes(call, resolved); };
    return row.any ? std::ranges::any_of(conditions, test) : std::ranges::all_of(conditions, test);
}

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
        if (field.type == Type::date) {
            text.append(call.store.environment.system->generalDate(call.date(field)));
        } else {
            appendInteger(text, static_cast<std::int64_t>(numberOf(call.arguments, field)));
        }
    }
    return text.append(message);
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

Text Call::text(Field field) const { return member<Text>(arguments, field); }

Currency Call::currency(Field field) const {
    return field.type == Type::currency ? member<Currency>(arguments, field) : Currency::fromDouble(number(field));
}

Date Call::date(Field field) const { return member<Date>(arguments, field); }

double Call::number(Field field) const { return numberOf(arguments, field); }

std::u16string Record::source() const {
    if (!shape.source.empty()) return std::u16string(shape.source);
    return u"Quill1XML.Store." + toUtf16(method) + u"()";
}

void refuse(const Record& record, const Row& row, const Call& call) {
    throw Error(applicationError, row.source.empty() ? record.source() : std::u16string(row.source),
                fillIn(row.message, record, call));
}

void appendAttributes(TextBuffer& out, const Record& record, const Call& call) {
    bool written = false;
    for (const Row& row : record.rows) {
        const bool holding = holds(call, row);
        switch (row.kind) {
            case RowKind::key:
            case RowKind::check:
                if (!holding) refuse(record, row, call);
                written = row.writes();
                break;
            case RowKind::attribute: written = holding; break;
            case RowKind::otherwise: written = holding && !written; break;
        }
        if (written) appendAttribute(out, row, call);
    }
}

void appendElement(TextBuffer& out, const Record& record, const Call& call) {
    if (!record.shape.continuesStartTag) {
        out.append(record.shape.begin);
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
    std::u16string& kind = store.packetKind;
    kind.assign(u"WebStore").append(record.kind());
    if (record.shape.carriesStoreId) {
        appendInteger(kind, store.storeId);
        kind.push_back(u'_');
    }
    appendInteger(kind, std::int64_t{counter.packets} + 1);
    store::appendToTempFile(store, element, kind, false);
    if (counter.records == store.packetSize) {
        ++counter.packets;
        counter.records = 0;
    }
}

}  // namespace quill1xml::records
