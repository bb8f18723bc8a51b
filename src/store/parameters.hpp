// The parameters of a method as data: name, type, place in the argument struct.
#pragma once

#include "quill1xml/arguments.hpp"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace quill1xml {

/// The type of a parameter.
enum class ParameterType : std::uint8_t {
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

consteval ParameterType typeNamed(std::string_view name) {
    for (std::size_t i = 0; i < std::size(typeNames); ++i) {
        if (typeNames[i] == name) return static_cast<ParameterType>(i);
    }
    throw "no parameter has a type of this name";
}

struct Parameter {
    std::string_view name{};
    ParameterType type{};
    bool required = false;
    std::uint16_t offset = 0;  ///< of the member in the argument struct
};

/// The parameters of an argument struct in interface order; specialised for every struct.
template <class Arguments>
inline constexpr std::span<const Parameter> parametersOf{};

/// The name of the method that takes the argument struct.
template <class Arguments>
inline constexpr std::string_view methodNameOf{};

// ---- Rows of a declaration become entries of a table. It ends with an entry that is dropped, so that an empty one is
// an array too.

#define QUILL1XML_BEGIN_TABLE(Struct, method)                        \
    template <>                                                      \
    inline constexpr std::string_view methodNameOf<Struct> = method; \
    template <>                                                      \
    struct detail::ParameterTable<Struct> {                          \
        using Self = Struct;                                         \
        static constexpr Parameter entries[] = {
#define QUILL1XML_ENTRY(MemberType, name, required) \
    {#name, typeNamed(#MemberType), required, static_cast<std::uint16_t>(offsetof(Self, name))},
#define QUILL1XML_END_TABLE(Struct)                                         \
    {}                                                                      \
    }                                                                       \
    ;                                                                       \
    }                                                                       \
    ;                                                                       \
    template <>                                                             \
    inline constexpr std::span<const Parameter> parametersOf<Struct> =      \
        std::span<const Parameter>(detail::ParameterTable<Struct>::entries) \
            .first(std::size(detail::ParameterTable<Struct>::entries) - 1);

namespace detail {
template <class Arguments>
struct ParameterTable;
}

#define METHOD(dispid, Result, Name, summary) QUILL1XML_BEGIN_TABLE(arguments::Name, #Name)
#define REQUIRED(Type, name) QUILL1XML_ENTRY(Type, name, true)
#define OPTION(Type, name, defaultValue) QUILL1XML_ENTRY(Type, name, false)
#define END(Name) QUILL1XML_END_TABLE(arguments::Name)
#include "quill1xml/methods/all.def"

}  // namespace quill1xml
