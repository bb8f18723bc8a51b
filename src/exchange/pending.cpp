#include "exchange/pending.hpp"

#include "exchange/send_order.hpp"
#include "store/packets.hpp"

#include <limits>
#include <set>
#include <utility>

namespace quill1xml::exchange {

std::u16string findPacket(const store::State& state, Text kind, Integer packet) {
    const auto found = state.environment.files->list(store::path(state, {.kind = kind, .number = packet}));
    return found.empty() ? std::u16string() : found.front();
}

std::vector<std::u16string> packetsOf(const store::State& state, Text kind) {
    std::vector<std::u16string> names;
    for (Integer packet = 1; packet < std::numeric_limits<Integer>::max(); ++packet) {
        std::u16string name = findPacket(state, kind, packet);
        if (name.empty()) break;
        names.push_back(std::move(name));
    }
    return names;
}

PendingPackets pendingPackets(const store::State& state) {
    PendingPackets pending;
    std::set<std::u16string> known;
    for (const std::u16string& kind : sendOrder(state)) {
        for (std::u16string& name : packetsOf(state, kind)) {
            known.insert(name);
            pending.toSend.push_back(std::move(name));
        }
    }
    for (std::u16string& name : store::packetFiles(state)) {
        if (!known.contains(name)) pending.toDeleteUnsent.push_back(std::move(name));
    }
    return pending;
}

}  // namespace quill1xml::exchange
