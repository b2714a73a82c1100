// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/NoteRender/PMNodeJson.h"

#include "LumaroCore/Support/JsonCodec.h"
#include "LumaroCore/Support/JsonNumber.h"
#include "LumaroCore/Support/Overloaded.h"

#include <cmath>

namespace lumaro {
namespace {

using simdjson::ondemand::json_type;

bool failUnsupported(JsonReader& reader) {
    return reader.fail(DecodeFault::invalidValue, "Unsupported JSON value in ProseMirror attrs");
}

bool readNumber(JsonReader& reader, JsonValue value, PMValue& out) {
    if (const auto whole = JsonReader::wholeNumber(value)) {
        out.value = *whole;
        return true;
    }
    double number = 0;
    if (value.get_double().get(number) != simdjson::SUCCESS) return failUnsupported(reader);
    // A fraction too small for a double: it will be written as the whole number that it reads as.
    if (number == std::trunc(number) && number >= -0x1p63 && number < 0x1p63) {
        out.value = static_cast<std::int64_t>(number);
    } else {
        out.value = number;
    }
    return true;
}

} // namespace

bool readJson(JsonReader& reader, JsonValue value, PMValue& out) {
    json_type type{};
    if (value.type().get(type) != simdjson::SUCCESS) return failUnsupported(reader);
    switch (type) {
    case json_type::null: {
        bool isNull = false;
        return value.is_null().get(isNull) == simdjson::SUCCESS && isNull ? (out.value = nullptr, true)
                                                                          : failUnsupported(reader);
    }
    case json_type::boolean:
        return value.get_bool().get(out.value.emplace<bool>()) == simdjson::SUCCESS || failUnsupported(reader);
    case json_type::number: return readNumber(reader, value, out);
    case json_type::string: return readJson(reader, value, out.value.emplace<std::string>());
    case json_type::array: return readJson(reader, value, out.value.emplace<PMValue::Array>());
    case json_type::object: return readJson(reader, value, out.value.emplace<PMValue::Object>());
    }
    return failUnsupported(reader);
}

void writeJson(JsonWriter& writer, const PMValue& value) {
    std::visit(Overloaded{[&](std::nullptr_t) { writer.null(); }, [&](bool truth) { writer.boolean(truth); },
                          [&](const auto& other) { writeJson(writer, other); }},
               value.value);
}

bool readJson(JsonReader& reader, JsonValue value, PMNode& out) {
    return reader.readObject(value, bindFields(out));
}

void writeJson(JsonWriter& writer, const PMNode& node) {
    writer.openObject();
    writeFields(writer, node);
    writer.closeObject();
}

template std::expected<PMNode, DecodeError> Wire::decode<PMNode>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<PMNode>(const PMNode& value);

} // namespace lumaro
