// SPDX-License-Identifier: Apache-2.0
#include "Fuzz/Fuzz.h"
#include "LumaroCore/Pairing/PairingClient.h"

#include <algorithm>

using namespace lumaro;

namespace {

void readToken(std::string_view text) {
    const auto token = CoupleToken::parse(text);
    if (!token) {
        fuzz::require(text.contains(std::get<LumaroCoreError::InvalidToken>(token.error().value).text), "other text");
        return;
    }
    fuzz::require(CoupleToken::parse(token->raw) == token, "a token reads back different");
    fuzz::require(isCoupleId(token->coupleId), "a token's couple id is none");
}

void readTyped(std::string_view text) {
    if (const auto id = inviteIdIn(text)) {
        fuzz::require(isInviteId(*id) && text.contains(*id), "an invite id comes from nowhere");
        fuzz::require(inviteIdIn("http://x/for/" + *id) == id, "an invite id makes no link");
    }
    const auto code = normalizeCode(text);
    const bool isDigits = std::ranges::all_of(code, [](char c) { return c >= '0' && c <= '9'; });
    fuzz::require(isDigits && code.size() <= joinCodeLength, "a code has other characters");
    fuzz::require(normalizeCode(code) == code, "a code changes when it is typed again");
}

} // namespace

// What people paste and type, and what the service and its callers send.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = fuzz::textOf(data, size);
    readToken(text);
    readTyped(text);
    static_cast<void>(fuzz::roundTrip<CreateCoupleRequest>(text));
    static_cast<void>(fuzz::roundTrip<JoinByCodeRequest>(text));
    static_cast<void>(fuzz::roundTrip<JoinByLinkRequest>(text));
    static_cast<void>(fuzz::roundTrip<HandoffRequest>(text));
    static_cast<void>(fuzz::roundTrip<CreatedCouple>(text));
    static_cast<void>(fuzz::roundTrip<ShareCode>(text));
    static_cast<void>(fuzz::roundTrip<Joined>(text));
    const auto error = fuzz::roundTrip<ServerError>(text);
    const auto failure = PairingFailure::of({.status = 400, .body = std::string{text}});
    fuzz::require(error || failure.kind == PairingFailure::Case::server, "a failure comes from nowhere");
    fuzz::require(!failure.text().empty(), "a failure has no text");
    return 0;
}
