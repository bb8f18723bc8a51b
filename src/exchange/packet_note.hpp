// What the journal is told of a packet, and what it tells. Without a journal nothing is.
#pragma once

#include "quill1xml/error.hpp"
#include "store/state.hpp"

#include <cstdint>
#include <exception>
#include <optional>
#include <string>

namespace quill1xml::exchange {

class PacketNote {
public:
    /// The content is read, not kept.
    PacketNote(store::State& state, const std::u16string& packetFile, Text content);

    /// The import number of a packet that was accepted as it is now.
    std::optional<Long> acceptedBefore();

    /// Right before the post; throws when that cannot be noted, and then nothing must be posted.
    void posting();

    /// After a post without a receipt that accepts it.
    void failed(const Error& error);

    /// After the receipt. That this cannot be noted is kept for requireWritten.
    void accepted(Long importNumber);

    /// Throws what kept accepted from being noted: the packet is accepted all the same.
    void requireWritten() const;

private:
    using Packet = store::Journal::Packet;

    const Packet* known() const;
    void doubt(Text what);

    store::State& state_;
    const std::u16string& packetFile_;
    std::uint64_t digest_ = 0;
    std::exception_ptr unwritten_;
};

}  // namespace quill1xml::exchange
