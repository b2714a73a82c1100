// SPDX-License-Identifier: Apache-2.0
#include "LumaroControl/BoardRequest.h"
#include "LumaroControl/BoardAnswer.h"

#include "LumaroCore/BoardModel/PayloadJson.h"
#include "LumaroCore/Protocol/ProtocolJson.h"
#include "LumaroCore/Support/JsonCodec.h"
#include "LumaroCore/Support/JsonTagged.h"

namespace lumaro {
namespace {

constexpr LooseKey kindKey{"kind"};
constexpr LooseKey payloadKey{"payload"};
constexpr std::string_view verbKey = "verb";

// A payload on its way in, read by the kind that stands beside it.
struct KindedPayload {
    ItemKind kind;
    Payload& payload;
};

bool readJson(JsonReader& reader, JsonValue value, KindedPayload& out) {
    return readPayload(reader, value, out.kind, out.payload);
}

} // namespace

bool readJson(JsonReader& reader, JsonValue value, NewItem& out) {
    JsonObject object;
    std::string name;
    if (!reader.open(value, object) || !reader.peekString(object, kindKey.name, name)) return false;
    const auto kind = fromName<ItemKind>(name);
    if (!kind) return reader.failUnder(kindKey.name, DecodeFault::invalidValue, "unknown value \"" + name + "\"");
    PassedOver kindAgain;
    KindedPayload payload{*kind, out.payload};
    return reader.readObject(object, std::tuple{BoundField{kindKey, kindAgain}, BoundField{payloadKey, payload}});
}

void writeJson(JsonWriter& writer, const NewItem& draft) {
    writer.openObject();
    writeValueUnderKey(writer, "\"kind\":", draft.payload.kind());
    writeValueUnderKey(writer, "\"payload\":", draft.payload);
    writer.closeObject();
}

bool readJson(JsonReader& reader, JsonValue value, BoardRequest::Verb& out) {
    return readTagged(reader, value, verbKey, out.value);
}

void writeJson(JsonWriter& writer, const BoardRequest::Verb& verb) {
    writer.openObject();
    writeTaggedFields(writer, verbKey, verb.value);
    writer.closeObject();
}

/// What a status says of the slot: the redacted token.
struct StatusToken {
    std::optional<std::string> token;

    static constexpr auto fields() { return std::tuple{Field{"token", &StatusToken::token}}; }
};

std::optional<PartnerID> slotInStatus(std::string_view json) {
    const auto status = Wire::decode<StatusToken>(json);
    if (!status || !status->token) return std::nullopt;
    return status->token->find(".b.") == std::string::npos ? PartnerID::a : PartnerID::b;
}

template std::expected<BoardRequest, DecodeError> Wire::decode<BoardRequest>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<BoardRequest>(const BoardRequest& value);
template std::expected<BoardAnswer, DecodeError> Wire::decode<BoardAnswer>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<BoardAnswer>(const BoardAnswer& value);

} // namespace lumaro
