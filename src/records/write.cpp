// The engine of the record tables: elements, refusals and packets.

#include "quill1xml/text.hpp"
#include "records/record.hpp"
#include "store/packets.hpp"
#include "store/state.hpp"
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
        if (field.type == Type::date) {
            text.append(call.store.environment.system->generalDate(call.date(field)));
        } else {
            appendInteger(text, static_cast<std::int64_t>(call.number(field)));
        }
    }
    return text.append(message);
}

}  // namespace

std::u16string Record::source() const {
    if (!shape.source.empty()) return std::u16string(shape.source);
    return u"Quill1XML.Store." + toUtf16(method) + u"()";
}

void writeAttribute(TextBuffer& out, const Row& row, const Call& call) {
    out.endAt(row.opening.write(out.room(Opening::longest)));
    if (row.rendering != nullptr) {
        row.rendering->append(out, call, row.field);
    } else {
        out.append(row.fixed);
    }
    out.push(u'"');
}

bool isImageName(Text name) {
    const auto endsIn = [name](Text suffix) {
        return name.size() >= suffix.size() && equalIgnoringCase(name.substr(name.size() - suffix.size()), suffix);
    };
    return endsIn(u".gif") || endsIn(u".jpg") || endsIn(u".jpeg");
}

void refuse(const Record& record, const Row& row, const Call& call) {
    throw Error(applicationError, row.source.empty() ? record.source() : std::u16string(row.source),
                fillIn(row.message, record, call));
}

void appendElement(TextBuffer& out, const Record& record, const Call& call) {
    if (!record.shape.continuesStartTag) {
        out.append(record.shape.begin);
        out.append(record.element);
        out.append(record.shape.afterName);
    }
    record.writeAttributes(out, record, call);
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
