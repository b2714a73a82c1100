// SPDX-License-Identifier: Apache-2.0
#pragma once

// How numbers, booleans, strings, ids, instants, enumerations, lists, maps and types with `fields()` are read.

#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Instant.h"
#include "LumaroCore/Support/JsonReader.h"
#include "LumaroCore/Support/UUID.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

namespace lumaro {

/// A key of its own, for a value that no single member holds.
struct LooseKey {
    std::string_view name;
    constexpr std::string_view key() const { return name; }
};

/// A field of `fields()`, or a `LooseKey`, and the place its value goes to.
template <class FieldType, class T>
struct BoundField {
    const FieldType& field;
    T& target;
};

/// A value that was read already, or need not be: it must be JSON all the same.
struct PassedOver {};

inline bool readJson(JsonReader& reader, JsonValue value, PassedOver& /*out*/) {
    return reader.skip(value);
}

/// Every field of a value, bound to it.
template <HasFields T>
auto bindFields(T& value) {
    static constexpr auto fields = T::fields();
    return std::apply(
        [&](const auto&... field) {
            return std::tuple{
                BoundField<std::remove_cvref_t<decltype(field)>,
                           std::remove_reference_t<decltype(value.*field.member)>>{field, value.*field.member}...};
        },
        fields);
}

inline bool readJson(JsonReader& reader, JsonValue value, double& out) {
    return reader.number(value, out);
}
inline bool readJson(JsonReader& reader, JsonValue value, std::int64_t& out) {
    return reader.integer(value, out);
}
inline bool readJson(JsonReader& reader, JsonValue value, bool& out) {
    return reader.boolean(value, out);
}
bool readJson(JsonReader& reader, JsonValue value, std::string& out);
bool readJson(JsonReader& reader, JsonValue value, UUID& out);
bool readJson(JsonReader& reader, JsonValue value, Instant& out);
/// A list of points is one flat array: x0, y0, x1, y1, ...
inline bool readJson(JsonReader& reader, JsonValue value, std::vector<Point>& out) {
    return reader.points(value, out);
}

template <NamedEnum E>
bool readJson(JsonReader& reader, JsonValue value, E& out) {
    std::string_view name;
    if (!reader.text(value, name)) return false;
    const auto found = fromName<E>(name);
    if (!found) return reader.fail(DecodeFault::invalidValue, "unknown value \"" + std::string{name} + "\"");
    out = *found;
    return true;
}

template <class T>
bool readJson(JsonReader& reader, JsonValue value, std::optional<T>& out) {
    bool isNull = false;
    if (!reader.readNull(value, isNull)) return false;
    if (isNull) {
        out.reset();
        return true;
    }
    return readJson(reader, value, out.emplace());
}

template <class T>
bool readJson(JsonReader& reader, JsonValue value, std::vector<T>& out) {
    return reader.readArray(value, [&](JsonValue element) { return readJson(reader, element, out.emplace_back()); });
}

template <class T>
bool readJson(JsonReader& reader, JsonValue value, std::map<std::string, T>& out) {
    return reader.readEntries(value, [&](std::string_view key, JsonValue entry) {
        const auto [place, isNew] = out.try_emplace(std::string{key});
        if (!isNew) return reader.fail(DecodeFault::duplicateKey, "the key stands twice");
        return readJson(reader, entry, place->second);
    });
}

template <class T>
bool readJson(JsonReader& reader, JsonValue value, std::map<UUID, T>& out) {
    return reader.readEntries(value, [&](std::string_view key, JsonValue entry) {
        const auto id = UUID::parse(key);
        if (!id) return reader.fail(DecodeFault::invalidValue, "Not a UUID: " + std::string{key});
        const auto [place, isNew] = out.try_emplace(*id);
        if (!isNew) return reader.fail(DecodeFault::duplicateKey, "the key stands twice");
        return readJson(reader, entry, place->second);
    });
}

template <IsFieldsAlone T>
bool readJson(JsonReader& reader, JsonValue value, T& out) {
    return reader.readObject(value, bindFields(out));
}

/// A `FieldIfKnown`: what cannot be read is passed over.
template <HasFields T>
bool readIfKnown(JsonReader& reader, JsonValue value, std::optional<T>& out) {
    out.reset();
    simdjson::ondemand::json_type type{};
    if (value.type().get(type) || type != simdjson::ondemand::json_type::object) return reader.skip(value);
    JsonObject object;
    if (!reader.open(value, object)) return false;
    if (reader.readObject(object, bindFields(out.emplace()))) return true;
    out.reset();
    return reader.forgive() && reader.skipFromStart(object);
}

template <class T>
    requires std::same_as<T, std::string> || std::same_as<T, Instant>
bool readIfKnown(JsonReader& reader, JsonValue value, std::optional<T>& out) {
    using enum simdjson::ondemand::json_type;
    out.reset();
    simdjson::ondemand::json_type type{};
    constexpr auto expected = std::same_as<T, std::string> ? string : number;
    if (value.type().get(type) || type != expected) return reader.skip(value);
    if (readJson(reader, value, out.emplace())) return true;
    out.reset();
    return reader.forgive();
}

/// The work behind `Wire::decode`: parses `text` and hands its root to `read`; the error, if any.
std::optional<DecodeError> decodeWith(std::string_view text, bool (*read)(JsonReader&, JsonValue, void*), void* target);

} // namespace lumaro
