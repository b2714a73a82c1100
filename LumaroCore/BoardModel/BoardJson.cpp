// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardModel/BoardJson.h"

#include "LumaroCore/BoardModel/PayloadJson.h"
#include "LumaroCore/Support/JsonCodec.h"
#include "LumaroCore/Support/JsonTagged.h"

namespace lumaro {
namespace {

constexpr LooseKey payloadKey{"payload"};
constexpr LooseKey itemKey{"item"};
constexpr LooseKey kindKey{"kind"};
constexpr LooseKey opKey{"op"};

// A payload on its way in, read by the kind that stands beside it.
struct KindedPayload {
    ItemKind kind;
    Payload& payload;
};

bool readJson(JsonReader& reader, JsonValue value, KindedPayload& out) {
    return readPayload(reader, value, out.kind, out.payload);
}

// An item on its way in; `isKnown` is unset where its kind is unknown to this version.
struct KnownItem {
    explicit KnownItem(BoardItem& into) : item(into) {}

    BoardItem& item;
    bool isKnown = false;
    std::string kind;
};

// The kind is read ahead of everything else: what an item of an unknown kind holds may be of any shape.
bool readJson(JsonReader& reader, JsonValue value, KnownItem& out) {
    JsonObject object;
    if (!reader.open(value, object) || !reader.peekString(object, kindKey.name, out.kind)) return false;
    const auto kind = fromName<ItemKind>(out.kind);
    out.isKnown = kind.has_value();
    if (!kind) return reader.skipObject(object);
    PassedOver kindAgain;
    KindedPayload payload{*kind, out.item.payload};
    // In the order of the wire, in which a reader finds fields fastest.
    const auto inOrder = [&](auto id, auto... others) {
        return std::tuple{id, BoundField{kindKey, kindAgain}, others..., BoundField{payloadKey, payload}};
    };
    return reader.readObject(object, std::apply(inOrder, bindFields(out.item)));
}

// The rest of an op whose tag was read ahead; none where the kind of its item is unknown.
bool readOp(JsonReader& reader, JsonObject& object, std::string_view tag, std::optional<Op>& out) {
    if (tag != Upsert::tag) return readAlternative(reader, object, opKey.name, tag, out.emplace().value);
    Upsert upsert;
    KnownItem known{upsert.item};
    PassedOver tagAgain;
    if (!reader.readObject(object, std::tuple{BoundField{opKey, tagAgain}, BoundField{itemKey, known}})) return false;
    if (known.isKnown) out = Op{std::move(upsert)};
    return true;
}

} // namespace

bool readJson(JsonReader& reader, JsonValue value, BoardItem& out) {
    KnownItem known{out};
    if (!readJson(reader, value, known)) return false;
    return known.isKnown ||
           reader.failUnder(kindKey.name, DecodeFault::invalidValue, "unknown value \"" + known.kind + "\"");
}

bool readJson(JsonReader& reader, JsonValue value, std::vector<BoardItem>& out) {
    return reader.readArray(value, [&](JsonValue element) {
        KnownItem known{out.emplace_back()};
        if (!readJson(reader, element, known)) return false;
        if (!known.isKnown) out.pop_back();
        return true;
    });
}

bool readJson(JsonReader& reader, JsonValue value, Board& out) {
    return reader.readObject(value, bindFields(out));
}

bool readJson(JsonReader& reader, JsonValue value, Op& out) {
    return readTagged(reader, value, opKey.name, out.value);
}

bool readJson(JsonReader& reader, JsonValue value, ForwardCompatibleOp& out) {
    JsonObject object;
    std::string tag;
    return reader.open(value, object) && reader.peekString(object, opKey.name, tag) &&
           readOp(reader, object, tag, out.op);
}

bool readOpFromRoom(JsonReader& reader, JsonValue value, std::optional<Op>& out) {
    JsonObject object;
    std::string tag;
    if (!reader.open(value, object) || !reader.peekString(object, opKey.name, tag)) return false;
    if (!hasAlternative(std::in_place_type<Op::Value>, tag)) return reader.skipObject(object);
    return readOp(reader, object, tag, out);
}

void writeJson(JsonWriter& writer, const BoardItem& item) {
    static constexpr auto fields = BoardItem::fields();
    const auto write = [&](const auto& field) { writeField(writer, field, item); };
    writer.openObject();
    std::apply(
        [&](const auto& id, const auto&... others) {
            write(id);
            writeValueUnderKey(writer, "\"kind\":", item.kind());
            (write(others), ...);
        },
        fields);
    writeValueUnderKey(writer, "\"payload\":", item.payload);
    writer.closeObject();
}

void writeJson(JsonWriter& writer, const Board& board) {
    writer.openObject();
    writeValueUnderKey(writer, "\"v\":", Wire::protocolVersion);
    writeFields(writer, board);
    writer.closeObject();
}

void writeJson(JsonWriter& writer, const Op& op) {
    writer.openObject();
    writeTaggedFields(writer, opKey.name, op.value);
    writer.closeObject();
}

template std::expected<Board, DecodeError> Wire::decode<Board>(std::string_view text);
template std::expected<BoardItem, DecodeError> Wire::decode<BoardItem>(std::string_view text);
template std::expected<Op, DecodeError> Wire::decode<Op>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<Board>(const Board& value);
template std::expected<std::string, EncodeError> Wire::encode<BoardItem>(const BoardItem& value);
template std::expected<std::string, EncodeError> Wire::encode<Op>(const Op& value);
template std::expected<void, EncodeError> Wire::encodeTo<Board>(std::string& out, const Board& value, int depth);
template std::expected<void, EncodeError> Wire::encodeTo<BoardItem>(std::string& out, const BoardItem& value,
                                                                    int depth);

} // namespace lumaro
