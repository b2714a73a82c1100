// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/Pairing.h"

#include <utility>

namespace lumaro {

Pairing::Pairing(PairingClient& client, std::size_t number, Then then)
    : client_(client), number_(std::to_string(number)), then_(std::move(then)),
      call_(client_.createCouple("load-a-" + number_, "Ann", [this](auto couple) { created(std::move(couple)); })) {
}

void Pairing::created(Result<CreatedCouple> couple) {
    if (!couple) return fail("starting a board", couple.error());
    if (!take(0, couple->token)) return;
    call_ = client_.createCode(tokens_[0], "Ann", [this](auto code) { coded(std::move(code)); });
}

void Pairing::coded(Result<ShareCode> code) {
    if (!code) return fail("asking for a code", code.error());
    const PairingClient::Joiner joiner{.deviceId = "load-b-" + number_, .name = "Bo", .slot = std::nullopt};
    call_ = client_.joinByCode(code->code, joiner, [this](auto answer) { joined(std::move(answer)); });
}

void Pairing::joined(Result<Joined> joined) {
    if (!joined) return fail("joining", joined.error());
    if (take(1, joined->token)) finish(std::move(tokens_));
}

bool Pairing::take(std::size_t slot, const std::string& text) {
    auto token = CoupleToken::parse(text);
    if (token) {
        tokens_.at(slot) = std::move(*token);
        return true;
    }
    finish(std::unexpected("the server handed out something that is no token"));
    return false;
}

void Pairing::fail(const std::string& step, const PairingFailure& failure) {
    finish(std::unexpected(step + " failed: " + std::string{failure.text()} + " " + failure.message));
}

// The receiver may drop this object.
void Pairing::finish(std::expected<TokenPair, std::string> result) {
    auto then = std::move(then_);
    then(std::move(result));
}

} // namespace lumaro
