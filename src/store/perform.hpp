// The methods of Store as functions over its state.
#pragma once

#include "quill1xml/arguments.hpp"
#include "quill1xml/entities.hpp"
#include "quill1xml/results.hpp"
#include "store/error_log.hpp"
#include "store/labels.hpp"
#include "store/state.hpp"

namespace quill1xml::store {

// What each method does; each is defined in the source of its subject.
#define METHOD(dispid, Result, Name, summary) Result perform(State& state, const arguments::Name& arguments);
#include "quill1xml/methods/all.def"

/// Runs a method: a failure is logged under the method's label. Methods that call others run them so, and each logs.
template <class Arguments>
auto run(State& state, const Arguments& arguments) {
    return logged(state, labels::of<Arguments>, [&] { return perform(state, arguments); });
}

}  // namespace quill1xml::store
