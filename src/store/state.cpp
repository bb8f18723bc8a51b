#include "store/state.hpp"

#include <utility>

namespace quill1xml::store {

State::State(platform::Environment given)
    : environment(std::move(given)),
      xmlText([this](std::uint8_t byte) { return environment.system->codePageCharacter(byte); }),
      decimalSeparator(environment.system->decimalSeparator()) {}

}  // namespace quill1xml::store
