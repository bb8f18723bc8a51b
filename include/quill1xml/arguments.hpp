// One struct per method of Store: the parameters by their names, in interface order, with their defaults.
//
//     store.AddTax({.strTaxCode = u"VAT", .dblRate = 15});
//
// What each method and parameter does stands in the manual (quill1xml reference) and in methods/*.def.
#pragma once

#include "quill1xml/methods/for_each.hpp"
#include "quill1xml/node.hpp"
#include "quill1xml/types.hpp"

namespace quill1xml::arguments {

#define QUILL1XML_MEMBER(Type, name, ...) Type name{__VA_ARGS__};
#define METHOD(dispid, Result, Name, summary, ...)                      \
    struct Name {                                                       \
        QUILL1XML_FOR_EACH(QUILL1XML_MEMBER __VA_OPT__(, ) __VA_ARGS__) \
    };
#include "quill1xml/methods/all.def"
#undef QUILL1XML_MEMBER

}  // namespace quill1xml::arguments
