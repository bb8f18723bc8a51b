// A store's use of its journal. Without a journal each of these does nothing.
#pragma once

#include "quill1xml/results.hpp"
#include "store/state.hpp"

#include <optional>
#include <span>
#include <string>

namespace quill1xml::store {

/// Holds the packet folder against other jobs. Throws as Files::hold does.
void holdFolder(State& state);

std::optional<UnfinishedJob> unfinishedJob(const State& state);

/// Throws where the journal keeps a job that is not over, of whatever folder.
void refuseUnfinished(State& state, Text source);

/// Before a sending: the packet files that it will find are noted, and from then on missed. Throws when the journal is
/// that of another job.
void beginSending(State& state, std::span<const std::u16string> packetFiles, Text source);

/// Before and after all packet files are deleted.
void noteDeleting(State& state);
void noteDeleted(State& state);

}  // namespace quill1xml::store
