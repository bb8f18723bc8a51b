// Packet files whose last record is not all there, as a process that was killed while it wrote leaves them.
#pragma once

#include "quill1xml/types.hpp"

#include <string>

namespace quill1xml::store {

/// Where the last record of a packet that the parser refused breaks off and what to do about it, for people; empty when
/// it does not break off, or that cannot be told. Looks at the last record only.
std::u16string accountOfTornEnd(Text fileName, Text packet);

}  // namespace quill1xml::store
