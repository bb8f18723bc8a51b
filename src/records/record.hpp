// Records as declarations: tables that read like the format they describe.
//
//     const Record AddMessage = record<arguments::AddMessage>(u"Message", [] { return rows(
//         key      ("MessageID",   "strMessageID",   length(1, 10), escaped, u"The MessageID may not be ..."),
//         attribute("MessageText", "strMessageText", notDefault,    escaped),
//         deleted); });
//
// Rows are worked off in order: a key is checked where it stands, an attribute is written when its condition holds.
#pragma once

#include "records/row.hpp"
#include "store/packets.hpp"

#include <span>
#include <string>
#include <string_view>

namespace quill1xml::records {

struct Record;

/// Runs before a record's rows, and may refuse the call.
using Prologue = void (*)(const Call& call, const Record& record);

/// Takes the finished element text. The default counts it and appends it to the packet file of its kind.
using Delivery = void (*)(store::State& store, const Record& record, std::u16string_view element);

void appendToPacket(store::State& store, const Record& record, std::u16string_view element);

/// What a record needs beyond its rows; most need nothing.
struct Shape {
    std::u16string_view parent{};     ///< the element it stands in; empty directly below the root
    bool isRoot = false;              ///< the element is the root itself
    std::u16string_view counter{};    ///< the element whose packet counters it shares
    std::u16string_view source{};     ///< of its errors, where it is not the method's own
    std::u16string_view afterName{};  ///< between the element's name and its attributes
    std::u16string_view end = u"/>";  ///< after the attributes
    bool continuesStartTag = false;   ///< goes on with the start tag of another record: nothing stands before
    bool carriesStoreId = false;      ///< the kind in file names goes on with the store number and "_"
    Prologue prologue = nullptr;
    Delivery delivery = appendToPacket;
};

/// One method's element.
struct Record {
    std::u16string_view element;
    std::string_view method;
    std::span<const Row> rows;
    std::span<const Parameter> parameters;
    const void* defaults;  ///< arguments of which none is given
    Shape shape;

    constexpr std::u16string_view counter() const { return shape.counter.empty() ? element : shape.counter; }

    /// One of the packet files that it is written to.
    store::Packet packet(const store::State& state, std::int64_t number) const {
        return {element, shape.carriesStoreId ? std::optional(state.storeId) : std::nullopt, number};
    }

    /// The source of the record's errors, such as "Quill1XML.Store.AddTax()".
    std::u16string source() const;
};

namespace detail {
template <class Arguments>
inline constexpr Arguments defaults{};
}

/// A record whose method takes Arguments and whose rows a lambda returns.
template <class Arguments, class Rows>
consteval Record record(std::u16string_view element, Rows, const Shape& shape = {}) {
    return {.element = element,
            .method = methodNameOf<Arguments>,
            .rows = detail::table<Arguments, Rows>,
            .parameters = parametersOf<Arguments>,
            .defaults = &detail::defaults<Arguments>,
            .shape = shape};
}

// ---- Writing records

/// Appends the attributes of a record: checks keys and writes what is to be written, in the order of the rows.
/// Throws the Error of the first check that fails, or of a value that cannot be rendered.
void appendAttributes(TextBuffer& out, const Record& record, const Call& call);

bool passes(const ResolvedTest& resolved, const Call& call);

/// Whether the condition of a row holds.
bool holds(const Row& row, const Call& call);

/// Tells of each value that the call gave and that the record went without; in strict mode throws for the first.
void tellLeftOut(const Record& record, const Call& call);

/// Throws the error of a row whose check failed.
[[noreturn]] void refuse(const Record& record, const Row& row, const Call& call);

/// Appends the element to a buffer: checks keys and writes attributes, in the order of the rows.
/// Throws the Error of the first check that fails, or of a value that cannot be rendered.
void appendElement(TextBuffer& out, const Record& record, const Call& call);

/// Works off one call of a record method: prologue, element, delivery.
void write(store::State& store, const Record& record, const void* arguments);

// ---- The records, one per RECORD and BUILDER of the method declarations

#define RECORD(dispid, Name, summary) extern const Record Name;
#define BUILDER(dispid, Result, Name, summary) extern const Record Name;
#include "quill1xml/methods/all.def"

}  // namespace quill1xml::records
