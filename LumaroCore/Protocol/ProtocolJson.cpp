// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/ProtocolJson.h"

#include "LumaroCore/Support/JsonCodec.h"

namespace lumaro {

bool readJson(JsonReader& reader, JsonValue value, PartnerSet& out) {
    out = {};
    return reader.readArray(value, [&](JsonValue element) {
        PartnerID slot{};
        if (!readJson(reader, element, slot)) return false;
        out.insert(slot);
        return true;
    });
}

void writeJson(JsonWriter& writer, const PartnerSet& partners) {
    writer.openArray();
    for (const auto slot : {PartnerID::a, PartnerID::b}) {
        if (partners.contains(slot)) writeJson(writer, slot);
    }
    writer.closeArray();
}

bool readJson(JsonReader& reader, JsonValue value, ServerErrorCode& out) {
    return readJson(reader, value, out.raw);
}

void writeJson(JsonWriter& writer, const ServerErrorCode& code) {
    writeJson(writer, code.raw);
}

template std::expected<SlotNames, DecodeError> Wire::decode<SlotNames>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<SlotNames>(const SlotNames& value);

} // namespace lumaro
