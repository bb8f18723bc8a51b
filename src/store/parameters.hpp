// The parameters of a method as data: name, type, place in the argument struct.
#pragma once

#include "quill1xml/arguments.hpp"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace quill1xml {

/// The type of a parameter.
enum class Type : std::uint8_t {
    text,
    integer,
    longInteger,
    floating,
    boolean,
    date,
    currency,
    variantText,
    variantInteger,
    node,
    nodeList
};

/// The types by the names that the declarations use, in the order of the enumeration.
inline constexpr std::string_view typeNames[] = {"Text",           "Integer", "Long",     "Double",
                                                 "Boolean",        "Date",    "Currency", "VariantText",
                                                 "VariantInteger", "Node",    "NodeList"};

consteval Type typeNamed(std::string_view name) {
    for (std::size_t i = 0; i < std::size(typeNames); ++i) {
        if (typeNames[i] == name) return static_cast<Type>(i);
    }
    throw "no parameter has a type of this name";
}

struct Parameter {
    std::string_view name;
    Type type;
    bool required;
    std::uint16_t offset;  ///< of the member in the argument struct
};

/// The parameters of an argument struct in interface order; specialised for every struct below.
template <class Arguments>
inline constexpr std::span<const Parameter> parametersOf{};

/// The name of the method that takes the argument struct.
template <class Arguments>
inline constexpr std::string_view methodNameOf{};

namespace detail {
template <class Arguments>
struct ParameterTable;

/// Lists end with an entry that is dropped, so that an empty list is an array too.
template <std::size_t size>
constexpr std::span<const Parameter> withoutLast(const Parameter (&table)[size]) {
    return std::span<const Parameter>(table, size - 1);
}
}  // namespace detail

#define QUILL1XML_PARAMETER(MemberType, name, ...) \
    {#name, typeNamed(#MemberType), true __VA_OPT__(&&false), static_cast<std::uint16_t>(offsetof(Self, name))},
/// Declares the parameter table of a struct of members (Type, name) and (Type, name, default).
#define QUILL1XML_DESCRIBE(Struct, methodName, ...)                                                        \
    template <>                                                                                            \
    struct detail::ParameterTable<Struct> {                                                                \
        using Self = Struct;                                                                               \
        static constexpr Parameter entries[] = {                                                           \
            QUILL1XML_FOR_EACH(QUILL1XML_PARAMETER __VA_OPT__(, ) __VA_ARGS__){{}, Type::text, false, 0}}; \
    };                                                                                                     \
    template <>                                                                                            \
    inline constexpr std::span<const Parameter> parametersOf<Struct> =                                     \
        detail::withoutLast(detail::ParameterTable<Struct>::entries);                                      \
    template <>                                                                                            \
    inline constexpr std::string_view methodNameOf<Struct> = methodName;

#define METHOD(dispid, Result, Name, summary, ...) QUILL1XML_DESCRIBE(arguments::Name, #Name __VA_OPT__(, ) __VA_ARGS__)
#include "quill1xml/methods/all.def"

}  // namespace quill1xml
