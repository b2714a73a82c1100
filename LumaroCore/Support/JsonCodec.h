// SPDX-License-Identifier: Apache-2.0
#pragma once

// For the files that give types their JSON form: reading, writing, and the bodies of `Wire`'s verbs, which such a file
// instantiates for its types.

#include "LumaroCore/Support/JsonRead.h"
#include "LumaroCore/Support/JsonWriter.h"
#include "LumaroCore/Support/Wire.h"

namespace lumaro {

template <class T>
std::expected<void, EncodeError> Wire::encodeTo(std::string& out, const T& value, int depth) {
    const auto start = out.size();
    JsonWriter writer{out, depth};
    writeJson(writer, value);
    auto finished = writer.finish();
    if (!finished) out.resize(start);
    return finished;
}

template <class T>
std::expected<std::string, EncodeError> Wire::encode(const T& value) {
    std::string text;
    if (auto written = encodeTo(text, value); !written) return std::unexpected(std::move(written.error()));
    return text;
}

template <class T>
std::expected<T, DecodeError> Wire::decode(std::string_view text) {
    T value{};
    const auto read = [](JsonReader& reader, JsonValue root, void* target) {
        return readJson(reader, root, *static_cast<T*>(target));
    };
    if (auto error = decodeWith(text, read, &value)) return std::unexpected(std::move(*error));
    return value;
}

} // namespace lumaro
