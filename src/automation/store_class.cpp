// The members of Store, from the method declarations.

#include "automation/classes.hpp"
#include "automation/entity_classes.hpp"
#include "automation/names.hpp"
#include "quill1xml/store.hpp"
#include "records/record.hpp"

#include <type_traits>

namespace quill1xml::automation {
namespace {

template <class Result>
constexpr ResultType resultType = ResultType::nothing;
template <>
constexpr ResultType resultType<Long> = ResultType::longInteger;
template <>
constexpr ResultType resultType<std::u16string> = ResultType::text;
template <>
constexpr ResultType resultType<Bytes> = ResultType::bytes;
template <class Item>
constexpr ResultType resultType<std::vector<Item>> = ResultType::collection;
template <class Item>
constexpr ResultType resultType<Received<Item>> = ResultType::received;

template <class Result>
Value asValue(Result result) {
    if constexpr (std::is_constructible_v<Value, Result&&>) {
        return Value(std::move(result));
    } else {
        return toValue(std::move(result));
    }
}

template <class Item>
Value asValue(Received<Item> received) {
    return std::visit([](auto& each) { return asValue(std::move(each)); }, received);
}

template <class ArgumentStruct, auto method>
Value invoke(void* object, const void* arguments) {
    Store& store = *static_cast<Store*>(object);
    const auto& typed = *static_cast<const ArgumentStruct*>(arguments);
    using Result = decltype((store.*method)(typed));
    if constexpr (std::is_void_v<Result>) {
        (store.*method)(typed);
        return {};
    } else {
        return asValue((store.*method)(typed));
    }
}

template <class ArgumentStruct>
constexpr ArgumentStruct defaultArguments{};

template <class ArgumentStruct>
constexpr auto parameterNames = tableOfNames<parametersOf<ArgumentStruct>.size()>(parametersOf<ArgumentStruct>);

template <class ArgumentStruct, class Result, auto method>
constexpr Member member(Long dispid, std::string_view name, std::string_view summary, const records::Record* record) {
    static_assert(std::is_trivially_copyable_v<ArgumentStruct> && std::is_standard_layout_v<ArgumentStruct>);
    return {.dispid = dispid,
            .name = name,
            .kind = MemberKind::method,
            .result = resultType<Result>,
            .summary = summary,
            .parameters = parametersOf<ArgumentStruct>,
            .parameterNames = parameterNames<ArgumentStruct>,
            .defaults = &defaultArguments<ArgumentStruct>,
            .argumentsSize = sizeof(ArgumentStruct),
            .record = record,
            .invoke = &invoke<ArgumentStruct, method>};
}

constexpr Member members[] = {
#define ENTRY(dispid, Result, Name, summary, record) \
    member<arguments::Name, Result, &Store::Name>(dispid, #Name, summary, record),
#define METHOD(dispid, Result, Name, summary) ENTRY(dispid, Result, Name, summary, nullptr)
#define BUILDER(dispid, Result, Name, summary) ENTRY(dispid, Result, Name, summary, &records::Name)
#define RECORD(dispid, Name, summary) ENTRY(dispid, void, Name, summary, &records::Name)
#include "quill1xml/methods/all.def"
#undef ENTRY
};
constexpr auto memberNames = tableOfNames(members);

std::span<const Event> events() {
    static constexpr Parameter parameters[] = {{"strTempFileName", ParameterType::text, true, 0},
                                               {"lngImportNumber", ParameterType::longInteger, true, 0}};
    static const Event all[] = {
        {.dispid = 1,
         .name = "PacketUploaded",
         .summary = "Raised after each packet that the server accepted, with its file name and import number.",
         .parameters = parameters}};
    return all;
}

std::shared_ptr<void> create(const ports::Environment& environment) { return std::make_shared<Store>(environment); }

void connect(void* object, EventSink sink) {
    static_cast<Store*>(object)->onPacketUploaded([sink = std::move(sink)](Text tempFileName, Long importNumber) {
        const Value arguments[] = {std::u16string(tempFileName), importNumber};
        sink(events().front(), arguments);
    });
}

}  // namespace

const Class& storeClass() {
    static const Class store{
        .name = "Store",
        .summary = "Publishes a host's records to a web store, and fetches what shoppers did there.",
        .members = members,
        .memberNames = memberNames,
        .events = events(),
        .exclusive = true,
        .create = &create,
        .connect = &connect};
    return store;
}

}  // namespace quill1xml::automation
