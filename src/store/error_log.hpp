// Failures go to the event log before the host gets them.
#pragma once

#include "quill1xml/ports.hpp"
#include "store/labels.hpp"
#include "store/state.hpp"

#include <utility>

namespace quill1xml::store {

/// Writes the exception being handled to the event log and throws it as an Error.
[[noreturn]] void logAndRethrow(const ports::Environment& environment, const Label& label);

/// Runs the body of a method or of an internal operation.
template <class Body>
decltype(auto) logged(const ports::Environment& environment, const Label& label, Body&& body) {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        logAndRethrow(environment, label);
    }
}

template <class Body>
decltype(auto) logged(const State& state, const Label& label, Body&& body) {
    return logged(state.environment, label, std::forward<Body>(body));
}

}  // namespace quill1xml::store
