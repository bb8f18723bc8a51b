// The methods of Store as functions over its state.
#pragma once

#include "quill1xml/store.hpp"
#include "store/state.hpp"

namespace quill1xml::store {

/// What each METHOD and BUILDER does; each is defined in the source of its subject.
namespace bodies {
#define METHOD(dispid, Result, Name, summary, ...) Result Name(State& state, const arguments::Name& arguments);
#define RECORD(...)
#include "quill1xml/methods/all.def"
}  // namespace bodies

/// Every method within its error trap. Methods that call others call these, so that each logs a failure.
namespace methods {
#define METHOD(dispid, Result, Name, summary, ...) Result Name(State& state, const arguments::Name& arguments);
#include "quill1xml/methods/all.def"
}  // namespace methods

}  // namespace quill1xml::store
