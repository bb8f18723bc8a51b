// Journals: their use, and going on with a job that was interrupted.

#include "quill1xml/error.hpp"
#include "store/document_head.hpp"
#include "store/going_on.hpp"
#include "store/packets.hpp"
#include "store/perform.hpp"
#include "text/numbers.hpp"
#include "text/tags.hpp"

#include <map>
#include <optional>
#include <set>
#include <utility>

namespace quill1xml::store {
namespace {

constexpr Text source = u"Quill1XML.Store.Resume()";

[[noreturn]] void fail(Text description) { throw Error(applicationError, source, description); }

/// A packet file's name before its number, and the number; nothing when it has none.
std::optional<std::pair<Text, Integer>> numbered(Text name) {
    const Text stem = name.substr(0, name.rfind(u'.'));
    const std::size_t digits = stem.find_last_not_of(u"0123456789") + 1;
    if (digits == stem.size()) return std::nullopt;
    return std::pair(stem.substr(0, digits), toInteger(stem.substr(digits)));
}

std::u16string accountOfMissing(const Journal& journal, const std::u16string& name) {
    std::u16string text = name + u" is missing in " + journal.folder();
    const auto known = journal.packets().find(name);
    const bool accepted = known != journal.packets().end() && known->second.state == Journal::Packet::State::accepted;
    if (accepted) {
        text.append(u"; it was accepted as import ");
        appendInteger(text, known->second.importNumber);
    } else {
        text.append(u", and it was not sent");
    }
    if (name == fileName(firstPacket)) return text.append(u". Put it back: every packet is sent with its head.");
    return text.append(accepted ? u". Put an empty file of that name in its place: Send looks no further than a gap."
                                : u". Put it back, or an empty file in its place to give it up.");
}

/// Every packet that is not accepted must be there, and those before it: Send looks no further than a gap.
void requireFiles(const State& state) {
    const auto listed = packetFiles(state);
    const std::set<std::u16string> files(listed.begin(), listed.end());
    const auto require = [&](const std::u16string& name) {
        if (!files.contains(name)) fail(accountOfMissing(*state.journal, name));
    };
    require(fileName(firstPacket));
    std::map<Text, Integer> seen;
    for (const auto& [name, packet] : state.journal->packets()) {
        if (packet.state == Journal::Packet::State::accepted) continue;
        const auto parts = numbered(name);
        if (!parts) continue;
        for (Integer& last = seen[parts->first]; last < parts->second; ++last) {
            std::u16string former(parts->first);
            appendInteger(former, last + 1);
            require(former.append(u".tmp"));
        }
    }
}

/// Takes over what the first packet file tells of the job.
void takeHead(State& state) {
    const std::u16string name = fileName(firstPacket);
    const std::u16string content = state.environment.files->readText(state.tempFilePath + name);
    std::u16string head = headFrom(content);
    if (head.empty()) {
        fail(name + u" in " + state.journal->folder() +
             u" does not begin with the root of a store document: put it back as it was.");
    }
    const Long storeId = toLong(tagAt(content, content.find(u'<')).value(u"StoreID"));
    if (storeId != state.journal->storeId()) {
        std::u16string text = name + u" is of store ";
        appendInteger(text, storeId);
        appendInteger(text.append(u", the journal of store "), state.journal->storeId());
        fail(text.append(u": another job was begun in this folder."));
    }
    state.documentHead = std::move(head);
}

void takeUp(State& state, Text schemaSource) {
    holdFolder(state);
    const Journal& journal = *state.journal;
    if (state.hold->folder() != journal.folder()) {
        fail(u"The journal is of the job in " + journal.folder() + u", not of one in " + state.hold->folder() +
             u": name the folder that belongs to it.");
    }
    run(state, arguments::SetStoreID{journal.storeId()});
    state.schemaSource = schemaSource.empty() ? Text(journal.schemaSource()) : schemaSource;
    if (journal.deletes()) {
        run(state, arguments::CleanupTempFiles{});
        return;
    }
    requireFiles(state);
    takeHead(state);
}

}  // namespace

void perform(State& state, const arguments::UseJournal& arguments) {
    state.hold.reset();
    state.journal.reset();
    if (arguments.strJournalFile.empty()) return;
    auto journal = std::make_unique<Journal>(state.environment.files, std::u16string(arguments.strJournalFile));
    state.journal = std::move(journal);
    if (!state.tempFilePath.empty()) holdFolder(state);
}

void perform(State& state, const arguments::Resume& arguments) {
    auto journal = std::make_unique<Journal>(state.environment.files, std::u16string(arguments.strJournalFile));
    if (!journal->begun()) {
        fail(u"The journal " + journal->fileName() +
             u" keeps no job: with it nothing was posted. Play the job again from its beginning.");
    }
    run(state, arguments::UseJournal{});
    run(state, arguments::SetTempFilePath{arguments.strTempFilePath});
    state.journal = std::move(journal);
    try {
        takeUp(state, arguments.strWebStoreSchemaSource);
    } catch (const std::exception&) {
        run(state, arguments::UseJournal{});
        throw;
    }
}

}  // namespace quill1xml::store
