// XML parameter lists: one element whose attributes are the values of an order or a quotation.
#pragma once

#include "quill1xml/lists.hpp"
#include "store/parameters.hpp"
#include "store/state.hpp"

#include <deque>
#include <string>

namespace quill1xml {

#define LIST(Name, Method) QUILL1XML_BEGIN_TABLE(Name, #Method)
#define REQUIRED(Type, name) QUILL1XML_ENTRY(Type, name, true)
#define OPTION(Type, name, defaultValue) QUILL1XML_ENTRY(Type, name, false)
#define END(Name) QUILL1XML_END_TABLE(Name)
#include "quill1xml/lists/all.def"

namespace records {

/// The texts that a parameter list's values refer to.
using TextStore = std::deque<std::u16string>;

/// Fills in a struct of values from the attributes of the list's root element, in the order of the parameters, so that
/// the first missing or unconvertible one decides the error. Throws the parser's code, source text and reason when the
/// list is not XML, 91 for a missing attribute, 13 and 6 for values that do not convert; an account of all that are
/// missing or do not convert stays in the state.
void readParameterList(store::State& store, Text list, std::span<const Parameter> parameters, void* values,
                       TextStore& texts);

/// Reads a list into a described struct of values.
template <class Values>
Values readParameterList(store::State& store, Text list, TextStore& texts) {
    Values values;
    readParameterList(store, list, parametersOf<Values>, &values, texts);
    return values;
}

}  // namespace records
}  // namespace quill1xml
