// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/Messages.h"

#include "LumaroCore/BoardModel/BoardJson.h"
#include "LumaroCore/Protocol/ProtocolJson.h"
#include "LumaroCore/Support/JsonCodec.h"
#include "LumaroCore/Support/JsonTagged.h"

namespace lumaro {
namespace {

constexpr std::string_view typeKey = "type";
constexpr LooseKey batchIdKey{"batchId"};
constexpr LooseKey authorKey{"author"};
constexpr LooseKey opsKey{"ops"};

// A list of ops from a room that may be newer, on its way in.
struct OpsFromRoom {
    std::vector<Op>& ops;
};

bool readJson(JsonReader& reader, JsonValue value, const OpsFromRoom& out) {
    return reader.readArray(value, [&](JsonValue element) {
        std::optional<Op> op;
        if (!readOpFromRoom(reader, element, op)) return false;
        if (op) out.ops.push_back(std::move(*op));
        return true;
    });
}

// As `BoundField`, with the target by value: an `OpsFromRoom` only refers to where the ops go.
struct BoundOpsFromRoom {
    LooseKey field;
    OpsFromRoom target;
};

template <class T>
void writeOrNull(JsonWriter& writer, std::string_view writtenKey, const std::optional<T>& value) {
    if (value) return writeValueUnderKey(writer, writtenKey, *value);
    writer.key(writtenKey);
    writer.null();
}

template <class Value>
void writeMessage(JsonWriter& writer, const Value& value) {
    writer.openObject();
    writeValueUnderKey(writer, "\"v\":", Wire::protocolVersion);
    writeTaggedFields(writer, typeKey, value);
    writer.closeObject();
}

} // namespace

// Chosen over the general one, so that an op that this version does not know is left out.
auto bindFields(ServerMessage::Ops& ops) {
    return std::tuple{BoundField{batchIdKey, ops.batchId}, BoundField{authorKey, ops.author},
                      BoundOpsFromRoom{opsKey, {ops.ops}}};
}

// Chosen over the general one, which leaves out what is absent: the partner must learn that the music stopped.
void writeFields(JsonWriter& writer, const ClientMessage::Presence& presence) {
    writeOrNull(writer, "\"nowPlaying\":", presence.nowPlaying);
    writeOrNull(writer, "\"here\":", presence.here);
    writeValueUnderKey(writer, "\"activity\":", presence.activity);
    writeValueUnderKey(writer, "\"zone\":", presence.zone);
    writeValueUnderKey(writer, "\"seen\":", presence.seen);
}

bool readJson(JsonReader& reader, JsonValue value, ClientMessage& out) {
    return readTagged(reader, value, typeKey, out.value);
}

bool readJson(JsonReader& reader, JsonValue value, ServerMessage& out) {
    return readTagged(reader, value, typeKey, out.value);
}

void writeJson(JsonWriter& writer, const ClientMessage& message) {
    writeMessage(writer, message.value);
}

void writeJson(JsonWriter& writer, const ServerMessage& message) {
    writeMessage(writer, message.value);
}

std::string_view ServerMessage::caseName() const {
    return std::visit([]<class Case>(const Case&) { return Case::tag; }, value);
}

template std::expected<ClientMessage, DecodeError> Wire::decode<ClientMessage>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<ClientMessage>(const ClientMessage& value);
template std::expected<void, EncodeError> Wire::encodeTo<ClientMessage>(std::string& out, const ClientMessage& value,
                                                                        int depth);
template std::expected<ServerMessage, DecodeError> Wire::decode<ServerMessage>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<ServerMessage>(const ServerMessage& value);
template std::expected<void, EncodeError> Wire::encodeTo<ServerMessage>(std::string& out, const ServerMessage& value,
                                                                        int depth);

} // namespace lumaro
