// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Pairing/RoomCheck.h"

#include "LumaroCore/Protocol/CoupleEndpoints.h"
#include "LumaroCore/Support/JsonCodec.h"

#include <utility>

namespace lumaro {

template std::expected<RoomCard, DecodeError> Wire::decode<RoomCard>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<RoomCard>(const RoomCard& value);

namespace {

// The person looks at the page meanwhile.
constexpr Seconds patience{8};
constexpr std::size_t maxCardBytes = 4096;

RoomFinding findingOf(const HttpClient::Answer& answer) {
    constexpr int firstOfTrouble = 500;
    if (!answer) return RoomFinding::unreachable;
    if (answer->status >= firstOfTrouble) return RoomFinding::unwell;
    const auto card = answer->isSuccess() ? Wire::decode<RoomCard>(answer->body) : std::unexpected(DecodeError{});
    if (!card || card->room != RoomCard::ours) return RoomFinding::noRoom;
    return card->v == RoomCard::version ? RoomFinding::room : RoomFinding::newerRoom;
}

} // namespace

std::unique_ptr<HttpClient::Call> checkRoom(HttpClient& http, const ServerAddress& address,
                                            std::move_only_function<void(RoomFinding)> then) {
    return http.send({.method = "GET",
                      .url = urlWithPath(address.url(), {RoomCard::path}),
                      .headers = {},
                      .body = {},
                      .timeout = patience,
                      .maxBodyBytes = maxCardBytes},
                     [then = std::move(then)](const HttpClient::Answer& answer) mutable { then(findingOf(answer)); });
}

} // namespace lumaro
