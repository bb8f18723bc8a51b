#include "store/going_on.hpp"

#include "quill1xml/error.hpp"
#include "text/numbers.hpp"

namespace quill1xml::store {
namespace {

/// Whether the journal is about the packet folder of the store.
bool isHere(State& state) {
    if (!state.journal || !state.journal->begun()) return false;
    holdFolder(state);
    return state.hold->folder() == state.journal->folder();
}

}  // namespace

void holdFolder(State& state) {
    if (!state.journal || (state.hold && state.heldPath == state.tempFilePath)) return;
    state.hold.reset();
    std::u16string folder = state.tempFilePath;
    if (folder.empty()) folder = u".";
    if (folder.size() > 1 && folder.ends_with(u'\\')) folder.pop_back();
    state.hold = state.environment.files->hold(folder);
    state.heldPath = state.tempFilePath;
}

std::optional<UnfinishedJob> unfinishedJob(const State& state) {
    if (!state.journal || !state.journal->begun()) return std::nullopt;
    const Journal& journal = *state.journal;
    UnfinishedJob job{.folder = journal.folder(),
                      .storeId = journal.storeId(),
                      .packets = journal.packets().size(),
                      .deletes = journal.deletes()};
    for (const auto& [name, packet] : journal.packets()) {
        if (packet.state == Journal::Packet::State::accepted) job.accepted.push_back(name);
    }
    return job;
}

void refuseUnfinished(State& state, Text source) {
    if (!state.journal) return;
    holdFolder(state);
    const Journal& journal = *state.journal;
    if (!journal.begun() || (journal.deletes() && isHere(state))) return;
    throw Error(applicationError, source,
                u"The job in " + journal.folder() + u" is not finished, says its journal " + journal.fileName() +
                    u". Resume and Send send what is left of it; to give that up, delete the journal.");
}

void beginSending(State& state, std::span<const std::u16string> packetFiles, Text source) {
    if (!state.journal || (packetFiles.empty() && !state.journal->begun())) return;
    holdFolder(state);
    Journal& journal = *state.journal;
    if (!journal.begun()) {
        journal.begin(state.hold->folder(), state.storeId, state.schemaSource);
    } else if (!isHere(state) || journal.storeId() != state.storeId) {
        std::u16string text =
            u"The journal " + journal.fileName() + u" is of the job in " + journal.folder() + u" for store ";
        appendInteger(text, journal.storeId());
        throw Error(applicationError, source, text.append(u": use another file for this one."));
    }
    journal.expect(packetFiles);
}

void noteDeleting(State& state) {
    if (isHere(state) && !state.journal->deletes()) state.journal->deleting();
}

void noteDeleted(State& state) {
    if (isHere(state)) state.journal->finish();
}

}  // namespace quill1xml::store
