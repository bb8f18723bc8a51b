// Calls as the hosts write them.
#pragma once

#include "automation/classes.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace quill1xml::automation {

enum class Notation : std::uint8_t {
    job,     ///< a line of JSON for the command line
    script,  ///< VBScript, VBA and VB6
    cpp
};

/// A parameter's value in an argument struct.
template <class Value>
const Value& valueOf(const void* arguments, const Parameter& parameter) {
    return *reinterpret_cast<const Value*>(static_cast<const std::byte*>(arguments) + parameter.offset);
}

/// A text without control characters, in quotes and escaped as JSON has it.
std::string jsonText(std::string_view text);

/// A long text as pieces for lines of their own, each but the last ending in a blank.
std::vector<std::string> pieces(const std::string& text);

/// A value in the notation.
std::string literal(Notation notation, const Parameter& parameter, const void* arguments);

/// A call with the required arguments and those that differ from their defaults. Empty where the notation has no words
/// for an argument.
std::string callText(Notation notation, const Member& member, const void* arguments);

}  // namespace quill1xml::automation
