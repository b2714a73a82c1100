// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/Ledger.h"

#include <algorithm>

namespace lumaro {
namespace {

Violation violation(const char* what, const UUID& batch, const char* fault) {
    return {std::string{what} + " of batch " + batch.lowerString() + " " + fault};
}

constexpr const char* ackText = "the ack";
constexpr const char* relayText = "the relay";

} // namespace

void Ledger::sent(PartnerID by, const UUID& batch, Clock::time_point at) {
    of(by).unacked.push_back({batch, at});
    of(by).unseen.push_back({batch, at});
}

std::expected<Ledger::Span, Violation> Ledger::take(std::deque<Sent>& waiting, const char* what, const UUID& batch,
                                                    Clock::time_point at) {
    const auto found = std::ranges::find(waiting, batch, &Sent::batch);
    if (found == waiting.end()) return std::unexpected(violation(what, batch, "came twice, or for what nobody sent"));
    const bool isFirst = found == waiting.begin();
    const Span span = at - found->at;
    waiting.erase(found);
    if (!isFirst) return std::unexpected(violation(what, batch, "overtook an older one's"));
    return span;
}

// The two sockets' sequences are one; `lead_` is how far one of them is ahead.
bool Ledger::isSameOrder(PartnerID socket, const UUID& batch) {
    if (lead_.empty()) ahead_ = socket;
    if (ahead_ == socket) {
        lead_.push_back(batch);
        return true;
    }
    const bool isSame = lead_.front() == batch;
    lead_.pop_front();
    return isSame;
}

std::expected<Ledger::Span, Violation> Ledger::acked(PartnerID by, const UUID& batch, Clock::time_point at) {
    auto span = take(of(by).unacked, ackText, batch, at);
    if (span && !isSameOrder(by, batch))
        return std::unexpected(violation(ackText, batch, "stands elsewhere in the partner's order"));
    return span;
}

std::expected<Ledger::Span, Violation> Ledger::relayed(PartnerID author, const UUID& batch, Clock::time_point at) {
    auto span = take(of(author).unseen, relayText, batch, at);
    if (span && !isSameOrder(other(author), batch))
        return std::unexpected(violation(relayText, batch, "stands elsewhere in the author's order"));
    return span;
}

std::size_t Ledger::unacked() const {
    return sides_[0].unacked.size() + sides_[1].unacked.size();
}

bool Ledger::isSettled() const {
    return std::ranges::all_of(sides_, [](const Side& side) { return side.unacked.empty() && side.unseen.empty(); });
}

std::vector<Violation> Ledger::missing() const {
    std::vector<Violation> found;
    for (const Side& side : sides_) {
        for (const Sent& sent : side.unacked) found.push_back(violation(ackText, sent.batch, "never came"));
        for (const Sent& sent : side.unseen) found.push_back(violation(relayText, sent.batch, "never came"));
    }
    return found;
}

} // namespace lumaro
