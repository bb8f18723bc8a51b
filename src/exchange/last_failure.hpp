// What a host can learn of the exchange that failed last, beyond its error.
#pragma once

#include "quill1xml/error.hpp"
#include "quill1xml/ports.hpp"
#include "store/state.hpp"

#include <string_view>

namespace quill1xml::exchange {

/// Posts a form and remembers what came back, for the account of a failure.
ports::HttpReply post(store::State& state, Text url, std::string_view body);

/// Puts the account of a failure together: packet file, record and attribute, or what the server answered.
void noteFailure(store::State& state, const Error& error) noexcept;

/// Does what exchanges something with a server, and leaves an account where it fails.
template <class Work>
auto accounted(store::State& state, Work work) {
    state.lastFailure.clear();
    state.answer = {};
    try {
        return work();
    } catch (const Error& error) {
        noteFailure(state, error);
        throw;
    }
}

}  // namespace quill1xml::exchange
