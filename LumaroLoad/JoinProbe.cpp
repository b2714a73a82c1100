// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/JoinProbe.h"

#include "LumaroCore/Protocol/CoupleEndpoints.h"
#include "LumaroCore/Support/Wire.h"

#include <utility>

namespace lumaro {

JoinProbe::JoinProbe(LoadNetwork& network, const std::string& server, const CoupleToken& token, Findings& findings,
                     std::move_only_function<void()> then)
    : findings_(findings), then_(std::move(then)),
      connection_(network.sockets().open({.url = CoupleEndpoints{server, token.coupleId}.webSocket(),
                                          .headers = {{"authorization", token.authorizationHeaderValue()}}},
                                         *this)) {
}

void JoinProbe::received(std::string_view bytes) {
    const auto span = Ledger::Clock::now() - began_;
    const auto message = Wire::decode<ServerMessage>(bytes);
    if (message && std::holds_alternative<ServerMessage::Welcome>(message->value)) {
        if (findings_.isMeasuring) findings_.joins.record(span);
    } else {
        findings_.violations.push_back({"the first message of a socket is no welcome"});
    }
    finish();
}

void JoinProbe::ended(WebSocketEnd /*end*/) {
    findings_.violations.push_back({"a socket ended before its welcome"});
    finish();
}

void JoinProbe::finish() {
    connection_.reset();
    auto then = std::move(then_);
    then();
}

} // namespace lumaro
