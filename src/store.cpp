#include "quill1xml/store.hpp"

#include "exchange/check.hpp"
#include "exchange/pending.hpp"
#include "store/going_on.hpp"
#include "store/perform.hpp"

#include <utility>

namespace quill1xml {

Store::Store() : Store(ports::systemEnvironment()) {}

Store::Store(ports::Environment environment) : state_(std::make_unique<store::State>(std::move(environment))) {}

Store::~Store() = default;

Store::Store(Store&& other) noexcept = default;

Store& Store::operator=(Store&& other) noexcept = default;

void Store::onPacketUploaded(PacketUploaded listener) { state_->packetUploaded = std::move(listener); }

void Store::onValueLeftOut(ValueLeftOut listener) { state_->valueLeftOut = std::move(listener); }

std::vector<std::u16string> Store::openRecords() const {
    std::vector<std::u16string> open;
    if (!state_->openProduct.empty()) open.emplace_back(u"Product");
    if (!state_->openOrder.empty()) open.emplace_back(u"Order");
    if (!state_->openQuote.empty()) open.emplace_back(u"Quote");
    return open;
}

std::optional<UnfinishedJob> Store::unfinishedJob() const { return store::unfinishedJob(*state_); }

PendingPackets Store::pendingPackets() const { return exchange::pendingPackets(*state_); }

UnderWay Store::underWay() const { return {state_->packetUnderWay, state_->answer.status != 0}; }

std::vector<Problem> Store::check() const { return exchange::check(*state_); }

std::vector<Problem> Store::check(Text packet) const { return exchange::checkPacket(*state_, std::u16string(packet)); }

#define METHOD(dispid, Result, Name, summary) \
    Result Store::Name(const arguments::Name& arguments) { return store::run(*state_, arguments); }
#include "quill1xml/methods/all.def"

}  // namespace quill1xml
