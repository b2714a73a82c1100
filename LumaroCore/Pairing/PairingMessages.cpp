// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Pairing/PairingMessages.h"

#include "LumaroCore/Support/JsonCodec.h"

namespace lumaro {

template std::expected<CreateCoupleRequest, DecodeError> Wire::decode<CreateCoupleRequest>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<CreateCoupleRequest>(const CreateCoupleRequest& value);
template std::expected<NameRequest, DecodeError> Wire::decode<NameRequest>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<NameRequest>(const NameRequest& value);
template std::expected<JoinByCodeRequest, DecodeError> Wire::decode<JoinByCodeRequest>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<JoinByCodeRequest>(const JoinByCodeRequest& value);
template std::expected<JoinByLinkRequest, DecodeError> Wire::decode<JoinByLinkRequest>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<JoinByLinkRequest>(const JoinByLinkRequest& value);
template std::expected<HandoffRequest, DecodeError> Wire::decode<HandoffRequest>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<HandoffRequest>(const HandoffRequest& value);
template std::expected<Handoff, DecodeError> Wire::decode<Handoff>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<Handoff>(const Handoff& value);
template std::expected<Invite, DecodeError> Wire::decode<Invite>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<Invite>(const Invite& value);
template std::expected<CreatedCouple, DecodeError> Wire::decode<CreatedCouple>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<CreatedCouple>(const CreatedCouple& value);
template std::expected<ShareCode, DecodeError> Wire::decode<ShareCode>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<ShareCode>(const ShareCode& value);
template std::expected<Joined, DecodeError> Wire::decode<Joined>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<Joined>(const Joined& value);
template std::expected<ServerError, DecodeError> Wire::decode<ServerError>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<ServerError>(const ServerError& value);

} // namespace lumaro
