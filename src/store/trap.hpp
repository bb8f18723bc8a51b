// The error trap that every method runs in: a failure is written to the event log and raised again.
#pragma once

#include "store/parameters.hpp"
#include "store/state.hpp"

#include <string_view>
#include <utility>

namespace quill1xml::store {

/// The fixed texts of a method's entries in the event log.
struct Label {
    std::string_view text;                             ///< the last line
    std::string_view caption = "Error Description: ";  ///< what stands before the description
    std::string_view property{};                       ///< goes on the last line with ".Get", for a getter
};

namespace detail {
template <class Arguments>
inline constexpr std::string_view labelText{};
template <class Arguments>
inline constexpr std::string_view labelCaption = Label{}.caption;

#define LABEL(Name, text) \
    template <>           \
    inline constexpr std::string_view labelText<arguments::Name> = text;
#define CAPTION(Name, text) \
    template <>             \
    inline constexpr std::string_view labelCaption<arguments::Name> = text;
#include "quill1xml/methods/all.def"
}  // namespace detail

/// Writes the exception being handled to the event log and throws it as an Error.
[[noreturn]] void reportAndRethrow(const platform::Environment& environment, const Label& label);

/// Runs the body of a method or of an internal operation.
template <class Body>
decltype(auto) trapped(const platform::Environment& environment, const Label& label, Body&& body) {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        reportAndRethrow(environment, label);
    }
}

template <class Body>
decltype(auto) trapped(const State& state, const Label& label, Body&& body) {
    return trapped(state.environment, label, std::forward<Body>(body));
}

/// "Method: Quill1XML.Store.<name>()", the label of every method without one of its own.
template <class Arguments>
constexpr Label labelOf(std::string_view usual) {
    const std::string_view own = detail::labelText<Arguments>;
    return {.text = own.empty() ? usual : own, .caption = detail::labelCaption<Arguments>};
}

}  // namespace quill1xml::store
