#include "exchange/packet_note.hpp"

#include "exchange/receipt.hpp"
#include "text/numbers.hpp"

namespace quill1xml::exchange {

PacketNote::PacketNote(store::State& state, const std::u16string& packetFile, Text content)
    : state_(state), packetFile_(packetFile) {
    if (state_.journal) digest_ = store::digestOf(content);
}

const PacketNote::Packet* PacketNote::known() const {
    const auto found = state_.journal->packets().find(packetFile_);
    return found == state_.journal->packets().end() ? nullptr : &found->second;
}

void PacketNote::doubt(Text what) {
    if (!state_.doubts.empty()) state_.doubts.append(u"\r\n");
    state_.doubts.append(packetFile_).append(what);
}

std::optional<Long> PacketNote::acceptedBefore() {
    const Packet* const packet = state_.journal ? known() : nullptr;
    if (packet == nullptr || packet->state != Packet::State::accepted) return std::nullopt;
    if (packet->digest != digest_) {
        std::u16string what(u" was accepted as import ");
        appendInteger(what, packet->importNumber);
        doubt(what.append(u", has changed since then, and is posted again."));
        return std::nullopt;
    }
    // A process before this one may have ended before it could tell.
    if (packet->doubtful) doubt(u" may have arrived twice: it was posted before, and no receipt came.");
    return packet->importNumber;
}

void PacketNote::posting() {
    if (!state_.journal) return;
    const Packet* const packet = known();
    if (packet != nullptr && (packet->doubtful || packet->state == Packet::State::posting)) {
        doubt(u" may have arrived twice: it was posted before, and no receipt came.");
    }
    state_.journal->posting(packetFile_, digest_);
}

void PacketNote::failed(const Error& error) {
    if (!state_.journal || !(state_.answer.notReached || isRefusal(error))) return;
    try {
        state_.journal->returned(packetFile_);
    } catch (const Error&) {
        // Then the packet counts as one that may have arrived; the host hears of the failure itself.
    }
}

void PacketNote::accepted(Long importNumber) {
    if (!state_.journal) return;
    try {
        state_.journal->accepted(packetFile_, digest_, importNumber);
    } catch (const Error&) {
        unwritten_ = std::current_exception();
    }
}

void PacketNote::requireWritten() const {
    if (unwritten_) std::rethrow_exception(unwritten_);
}

}  // namespace quill1xml::exchange
