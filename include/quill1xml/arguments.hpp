// One struct per method of Store: the parameters by their names, in interface order, with their defaults.
//
//     store.AddTax({.strTaxCode = u"VAT", .dblRate = 15});
//
// What each method and parameter does stands in the manual too (quill1xml reference).
#pragma once

#include "quill1xml/node.hpp"
#include "quill1xml/types.hpp"

namespace quill1xml::arguments {

#define METHOD(dispid, Result, Name, summary) struct Name {
#define REQUIRED(Type, name) Type name{};
#define OPTION(Type, name, defaultValue) Type name{defaultValue};
#define END(Name) \
    }             \
    ;
#include "quill1xml/methods/all.def"

}  // namespace quill1xml::arguments
