// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardModel/PayloadJson.h"

#include "LumaroCore/NoteRender/PMNodeJson.h"
#include "LumaroCore/Support/JsonCodec.h"

namespace lumaro {

bool readPayload(JsonReader& reader, JsonValue value, ItemKind kind, Payload& out) {
    // A fold over the alternatives finds the one whose index is the kind.
    const auto wanted = static_cast<std::size_t>(std::to_underlying(kind));
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
        bool read = false;
        const auto readAlternative = [&]<std::size_t J>() {
            auto held = std::make_shared<Payload::Value>(std::in_place_index<J>);
            read = readJson(reader, value, *std::get_if<J>(held.get()));
            out = Payload{std::move(held)};
            return true;
        };
        static_cast<void>(((I == wanted && readAlternative.template operator()<I>()) || ...));
        return read;
    }(std::make_index_sequence<std::variant_size_v<Payload::Value>>{});
}

void writeJson(JsonWriter& writer, const Payload& payload) {
    std::visit([&](const auto& alternative) { writeJson(writer, alternative); }, payload.value());
}

template std::expected<PomodoroPayload, DecodeError> Wire::decode<PomodoroPayload>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<PomodoroPayload>(const PomodoroPayload& value);
template std::expected<std::vector<InkStroke>, DecodeError> Wire::decode<std::vector<InkStroke>>(std::string_view text);
template std::expected<std::string, EncodeError>
Wire::encode<std::vector<InkStroke>>(const std::vector<InkStroke>& value);

} // namespace lumaro
