// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardModel/BoardJson.h"

#include "LumaroCore/BoardModel/PayloadJson.h"
#include "LumaroCore/Support/JsonCodec.h"
#include "LumaroCore/Support/JsonTagged.h"

namespace lumaro {
namespace {

constexpr LooseKey payloadKey{"payload"};
constexpr LooseKey itemKey{"item"};
constexpr std::string_view kindKey = "kind";
constexpr std::string_view opKey = "op";

// A payload on its way in, read by the kind that stands beside it.
struct KindedPayload {
    ItemKind kind;
    Payload& payload;
};

bool readJson(JsonReader& reader, JsonValue value, KindedPayload& out) {
    return readPayload(reader, value, out.kind, out.payload);
}

// An item on its way in, none where its kind is unknown.
struct KnownItem {
    std::optional<BoardItem> item;
};

// The kind is read ahead of everything else: what an item of an unknown kind holds may be of any shape.
template <class Unknown>
bool readItem(JsonReader& reader, JsonValue value, std::optional<BoardItem>& out, Unknown unknown) {
    JsonObject object;
    std::string name;
    if (!reader.open(value, object) || !reader.peekString(object, kindKey, name)) return false;
    const auto kind = fromName<ItemKind>(name);
    if (!kind) return unknown(object, name);
    auto& item = out.emplace();
    KindedPayload payload{*kind, item.payload};
    return reader.readObject(object, std::tuple_cat(bindFields(item), std::tuple{BoundField{payloadKey, payload}}));
}

bool readJson(JsonReader& reader, JsonValue value, KnownItem& out) {
    return readItem(reader, value, out.item,
                    [&](JsonObject& object, const std::string&) { return reader.skipObject(object); });
}

} // namespace

bool readJson(JsonReader& reader, JsonValue value, BoardItem& out) {
    std::optional<BoardItem> item;
    const bool read = readItem(reader, value, item, [&](JsonObject&, const std::string& name) {
        return reader.failUnder(kindKey, DecodeFault::invalidValue, "unknown value \"" + name + "\"");
    });
    if (read) out = std::move(*item);
    return read;
}

bool readJson(JsonReader& reader, JsonValue value, std::vector<BoardItem>& out) {
    return reader.readArray(value, [&](JsonValue element) {
        KnownItem known;
        if (!readJson(reader, element, known)) return false;
        if (known.item) out.push_back(std::move(*known.item));
        return true;
    });
}

bool readJson(JsonReader& reader, JsonValue value, Op& out) {
    return readTagged(reader, value, opKey, out.value);
}

bool readJson(JsonReader& reader, JsonValue value, ForwardCompatibleOp& out) {
    JsonObject object;
    std::string tag;
    if (!reader.open(value, object) || !reader.peekString(object, opKey, tag)) return false;
    if (tag != Upsert::tag) return readAlternative(reader, object, opKey, tag, out.op.emplace().value);
    KnownItem known;
    if (!reader.readObject(object, std::tuple{BoundField{itemKey, known}})) return false;
    if (known.item) out.op = Op{Upsert{std::move(*known.item)}};
    return true;
}

void writeJson(JsonWriter& writer, const BoardItem& item) {
    static constexpr auto fields = BoardItem::fields();
    const auto write = [&](const auto& field) {
        writeValueUnderKey(writer, {field.written.data(), field.written.size()}, item.*field.member);
    };
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
    writeTaggedFields(writer, opKey, op.value);
    writer.closeObject();
}

template std::expected<Board, DecodeError> Wire::decode<Board>(std::string text);
template std::expected<BoardItem, DecodeError> Wire::decode<BoardItem>(std::string text);
template std::expected<Op, DecodeError> Wire::decode<Op>(std::string text);
template std::expected<std::string, EncodeError> Wire::encode<Board>(const Board& value);
template std::expected<std::string, EncodeError> Wire::encode<BoardItem>(const BoardItem& value);
template std::expected<std::string, EncodeError> Wire::encode<Op>(const Op& value);
template std::expected<void, EncodeError> Wire::encodeTo<BoardItem>(std::string& out, const BoardItem& value,
                                                                    int depth);

} // namespace lumaro
