#include "store/state.hpp"

#include <utility>

namespace quill1xml::store {

State::State(ports::Environment given)
    : environment(std::move(given)),
      xmlText(environment.system->codePage()),
      decimalSeparator(environment.system->decimalSeparator()) {}

}  // namespace quill1xml::store
