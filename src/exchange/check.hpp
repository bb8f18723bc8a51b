// Packet files looked at before they are sent.
#pragma once

#include "quill1xml/problem.hpp"
#include "store/state.hpp"

#include <vector>

namespace quill1xml::exchange {

/// Everything that is wrong with the packet files in the folder: every record that does not load or that the schema
/// refuses, and files that Send would not send. Changes and sends nothing; a schema with a URL is fetched.
std::vector<Problem> check(store::State& state);

/// What is wrong with one packet file.
std::vector<Problem> checkPacket(store::State& state, const std::u16string& name);

}  // namespace quill1xml::exchange
