// What the examples come to when they are played.
#pragma once

#include "automation/classes.hpp"

#include <span>
#include <string>
#include <string_view>

namespace quill1xml::automation {

/// The calls among which an example makes sense.
struct Surroundings {
    std::span<const std::string_view> before{};
    std::span<const std::string_view> after{};
};

Surroundings surroundingsOf(const Member& member);

struct Outcome {
    std::string written{};  ///< the element, or the record that it is part of
    std::string result{};   ///< what the method returned
};

/// Plays the example of a method among its surroundings. Nothing is written by a method that only asks a server.
Outcome played(const Member& member);

}  // namespace quill1xml::automation
