// The public classes and their members as data: what automation, the type library, the command line and the manual
// know of them. Everything in it comes from the declarations.
#pragma once

#include "automation/names.hpp"
#include "quill1xml/node.hpp"
#include "quill1xml/ports.hpp"
#include "quill1xml/types.hpp"
#include "store/parameters.hpp"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace quill1xml::records {
struct Record;
}

namespace quill1xml::automation {

struct Class;

/// Nodes that a host gets as objects of a class.
struct Collection {
    const Class* itemClass = nullptr;
    std::vector<Node> nodes;
    std::vector<std::shared_ptr<void>> objects;             ///< the host's own over the nodes; null without such
    std::shared_ptr<const ports::Environment> environment;  ///< null for the system's
};

/// A result or an event argument.
using Value = std::variant<std::monostate, Long, Integer, Double, Date, std::u16string, Bytes, Document, Collection>;

/// The type of a member's result; `received` is a collection, a document or a text. The last two are those of
/// collections only.
enum class ResultType : std::uint8_t {
    nothing,
    longInteger,
    integer,
    floating,
    date,
    text,
    bytes,
    collection,
    received,
    variant,
    enumerator
};

enum class MemberKind : std::uint8_t { method, propertyGet };

struct Member {
    Long dispid = 0;
    std::string_view name{};
    MemberKind kind = MemberKind::method;
    ResultType result = ResultType::nothing;
    std::string_view summary{};
    std::span<const Parameter> parameters{};
    NameTable parameterNames{};
    const void* defaults = nullptr;           ///< an argument struct that holds every default
    std::size_t argumentsSize = 0;            ///< of the argument struct, in bytes; it is trivially copyable
    const records::Record* record = nullptr;  ///< the element that the method writes, where it writes one

    /// Calls the member on an object of its class. Throws Error.
    Value (*invoke)(void* object, const void* arguments) = nullptr;
};

/// Members from this number on go beyond the interface that hosts were promised.
inline constexpr Long firstExtension = 2000;

/// The element that the record of a method becomes part of, by a later call that locks it; empty where there is none.
Text parentOf(const Member& method);

/// The element that a method writes, where it writes one.
Text elementOf(const Member& method);

/// Whether a method goes on with the start tag of the element, which another method has begun.
bool continuesElement(const Member& method);

/// Whether the record of a method has an attribute of that name.
bool hasAttribute(const Member& method, Text attribute);

/// An event that a class raises.
struct Event {
    Long dispid = 0;
    std::string_view name{};
    std::string_view summary{};
    std::span<const Parameter> parameters{};  ///< without places in a struct
};

/// Receives events: the event and its arguments in order.
using EventSink = std::function<void(const Event& event, std::span<const Value> arguments)>;

struct Class {
    std::string_view name{};
    std::string_view summary{};
    std::span<const Member> members{};  ///< in interface order
    NameTable memberNames{};
    std::span<const Event> events{};

    /// A call into an object is refused while another one is under way, but from an event.
    bool exclusive = false;

    /// Makes an object of the class. An entity wraps nothing until its member Initialise is called.
    std::shared_ptr<void> (*create)(const ports::Environment& environment) = nullptr;

    /// Tells an object of the class where its events go; null for a class without events.
    void (*connect)(void* object, EventSink sink) = nullptr;
};

const Class& storeClass();
const Class& cstringClass();
const Class& customerClass();
const Class& orderClass();
const Class& orderLineItemClass();
const Class& quotationClass();
const Class& quotationLineItemClass();
const Class& userDefinedFieldClass();

/// The collections that hosts get. They are not among the classes: hosts cannot create them.
const Class& collectionClass();

/// The collections' dispids, which hosts that declare an object As Collection expect.
namespace collection_ids {
inline constexpr Long item = 0;
inline constexpr Long add = 1;
inline constexpr Long count = 2;
inline constexpr Long remove = 3;
inline constexpr Long newEnum = -4;
}  // namespace collection_ids

/// Every class, in the order of the type library.
std::span<const Class* const> classes();

/// The member of that name, without regard to (ASCII) case; null when there is none.
const Member* findMember(const Class& of, std::string_view name);
const Member* findMember(const Class& of, Text name);

/// The parameter of that name, without regard to case; its index, or -1.
int findParameter(const Member& of, std::string_view name);
int findParameter(const Member& of, Text name);

/// The arguments of one call, being filled in. Parameters that are not set keep their defaults.
class Arguments {
public:
    explicit Arguments(const Member& member);
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    /// Sets a text parameter; the text is copied.
    void setText(std::size_t parameter, Text value);

    /// As setText, of a text that outlives this object and is not copied.
    void lendText(std::size_t parameter, Text value);

    /// Sets a parameter of a whole-number type. Throws error 6 (Overflow) beyond the range of the type.
    void setWhole(std::size_t parameter, std::int64_t value);

    void setDouble(std::size_t parameter, double value);
    void setBoolean(std::size_t parameter, bool value);
    void setDate(std::size_t parameter, Date value);
    void setCurrency(std::size_t parameter, Currency value);

    /// Sets a node list parameter, or a node parameter, which takes exactly one node.
    void setNodes(std::size_t parameter, std::vector<Node> nodes);

    /// Sets a node list parameter to nodes that the call itself looks up.
    void setNodes(std::size_t parameter, std::unique_ptr<const NodeSource> nodes);

    /// Throws error 449 (Argument not optional) with the name of the first required parameter that was not set.
    void requireAll() const;

    /// The argument struct, for Member::invoke. Valid while this object lives.
    const void* data() const { return storage_.get(); }

private:
    template <class Value>
    void store(std::size_t parameter, const Value& value);

    const Member& member_;
    std::unique_ptr<std::byte[]> storage_;
    std::vector<bool> set_;
    std::vector<std::unique_ptr<std::u16string>> texts_;
    std::vector<std::unique_ptr<std::vector<Node>>> nodes_;
    std::vector<std::unique_ptr<const NodeSource>> sources_;
};

/// A parameter's default from its member's argument struct.
template <class Value>
const Value& defaultOf(const Member& member, const Parameter& parameter) {
    return *reinterpret_cast<const Value*>(static_cast<const std::byte*>(member.defaults) + parameter.offset);
}

/// Whether a parameter is a number that says yes, no or nothing at all, which the type library has an enumeration for.
bool isThreeState(const Member& member, const Parameter& parameter);

}  // namespace quill1xml::automation
