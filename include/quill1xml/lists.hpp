// The values of an order and of a quotation by their names, in the order of reading, for AddOrder and AddQuotation:
//
//     store.AddOrder({OrderList{.Order = Date::of(2007, 3, 5), .OrderNumber = 1001}.xml()});
//
// What is left out says so in the list: "StringDefault", the zero date or -1. xml() throws error 5 for a date outside
// the years 100 to 9999 and error 6 for a number that is not finite.
#pragma once

#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml {

/// What a list says where it has no value.
template <class Value>
inline constexpr Value absent{-1};
template <>
inline constexpr Text absent<Text> = notGiven;
template <>
inline constexpr Date absent<Date>{};

#define LIST(Name, Method) struct Name {
#define REQUIRED(Type, name) Type name{absent<Type>};
#define OPTION(Type, name, defaultValue) Type name{defaultValue};
#define END(Name)               \
    std::u16string xml() const; \
    }                           \
    ;
#include "quill1xml/lists/all.def"

}  // namespace quill1xml
