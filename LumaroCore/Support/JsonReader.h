// SPDX-License-Identifier: Apache-2.0
#pragma once

// Long for a header: the readers of objects are templates, and the short ones run once for every value of a board.

#include "LumaroCore/Support/JsonError.h"
#include "LumaroCore/Support/JsonPlace.h"
#include "LumaroCore/Support/Plane.h"

#include <simdjson.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace lumaro {

using JsonValue = simdjson::ondemand::value;
using JsonObject = simdjson::ondemand::object;
using JsonKey = simdjson::ondemand::raw_json_string;

/// Reads one JSON text in a single pass, keeping the first error with its path.
///
/// A type is read by an overload of `bool readJson(JsonReader&, JsonValue, T&)`, found by its argument, which answers
/// false once something failed; types with `fields()` need none. Only files that hold such overloads include this.
class JsonReader {
public:
    explicit JsonReader(simdjson::ondemand::parser& parser) : parser_(parser) {}

    /// Records the first error at the current place; always false.
    bool fail(DecodeFault fault, std::string message);
    /// The same at `key` of the object that is about to be read.
    bool failUnder(std::string_view key, DecodeFault fault, std::string message);
    /// The same for what the JSON library found where `expected` ("a string") was wanted.
    bool fail(simdjson::error_code code, std::string_view expected);

    const std::optional<DecodeError>& error() const { return error_; }
    /// Forgets an error in what a value says. One that JSON itself has is kept, and the answer is false.
    bool forgive();

    /// Calls `each(JsonValue)` for the elements until one answers false.
    template <class Each>
    bool readArray(JsonValue value, Each each);

    /// Calls `each(std::string_view key, JsonValue)` for the entries of an object with free keys.
    template <class Each>
    bool readEntries(JsonValue value, Each each);

    /// Reads an object into a tuple of bound fields (`bindFields`, `BoundField`).
    template <class... Bound>
    bool readObject(JsonValue value, std::tuple<Bound...> fields);
    template <class... Bound>
    bool readObject(JsonObject& object, std::tuple<Bound...> fields);

    /// Reads the string under `key`, ahead of everything else in the object, which is left at its start.
    bool peekString(JsonObject& object, std::string_view key, std::string& out);

    /// Opens an object; it must then be read with `readObject` or `skipObject`.
    bool open(JsonValue value, JsonObject& out) {
        if (const auto code = value.get_object().get(out)) return fail(code, "an object");
        return checkDepth();
    }

    /// Passes over a value; it must be JSON all the same.
    /// The value may stay where it is: whoever iterates around it goes on behind it.
    bool skip(JsonValue value);
    bool skipObject(JsonObject& object);
    /// The same from the object's start, however far it was read.
    bool skipFromStart(JsonObject& object);

    /// Whether the value is null; what only begins like it is malformed.
    bool readNull(JsonValue value, bool& out) {
        return value.is_null().get(out) == simdjson::SUCCESS || fail(DecodeFault::malformed, "not JSON");
    }

    /// A view of a string's characters, good until the next call on this reader.
    bool text(JsonValue value, std::string_view& out) {
        // The library's token of a string runs from its opening quote to the next token.
        const std::string_view token = value.raw_json_token();
        JsonKey raw;
        if (const auto code = value.get_raw_json_string().get(raw)) return fail(code, "a string");
        const auto size = token.rfind('"') - 1;
        if (std::memchr(raw.raw(), '\\', size) != nullptr) return unescape(raw, size, out);
        out = {raw.raw(), size};
        return true;
    }
    bool integer(JsonValue value, std::int64_t& out) {
        const auto whole = wholeNumber(value);
        if (!whole) return failInteger(value);
        out = *whole;
        return true;
    }
    /// The number, when it is whole and 64 bits hold it, however it is written; fails nothing.
    static std::optional<std::int64_t> wholeNumber(JsonValue value) {
        std::int64_t whole = 0;
        if (value.get_int64().get(whole) == simdjson::SUCCESS) return whole;
        return carefulWholeNumber(value);
    }
    // A third of a board with drawings is numbers; kept in a function of its own, each costs twice the time.
    [[gnu::always_inline]] bool number(JsonValue value, double& out) {
        return value.get_double().get(out) == simdjson::SUCCESS || failNumber(value);
    }
    bool boolean(JsonValue value, bool& out) {
        return value.get_bool().get(out) == simdjson::SUCCESS || failBoolean(value);
    }
    /// Points from one flat array of numbers.
    bool points(JsonValue value, std::vector<Point>& out);

private:
    bool checkDepth() {
        const int depth = here_ == nullptr ? 0 : here_->depth;
        return depth < maxJsonDepth || fail(DecodeFault::tooDeep, "nested too deeply");
    }
    JsonPlace& here() { return *here_; }
    // Where a number was wanted and none stands.
    bool failToken(std::string_view token, std::string_view expected);
    bool failNumber(JsonValue value);
    bool failInteger(JsonValue value);
    bool failBoolean(JsonValue value);
    static std::optional<std::int64_t> carefulWholeNumber(JsonValue value);
    bool keyText(JsonKey key, std::string_view& out);
    bool unescape(JsonKey raw, std::size_t size, std::string_view& out);
    // Whether the key is written so, with no escapes. Names are shorter than the padding behind the text.
    static bool isWritten(JsonKey key, std::string_view name) {
        return std::memcmp(key.raw(), name.data(), name.size()) == 0 && key.raw()[name.size()] == '"';
    }

    template <std::size_t... I, class Fields>
    bool readKnown(std::index_sequence<I...> indices, JsonKey key, JsonValue value, Fields& fields,
                   std::array<bool, sizeof...(I)>& seen, std::size_t& expected);
    template <class Bound>
    bool readField(const Bound& bound, JsonValue value, bool& seen);
    template <class Bound>
    bool finishField(const Bound& bound, bool seen);

    simdjson::ondemand::parser& parser_;
    JsonPlace* here_ = nullptr;
    std::vector<std::uint8_t> unescaped_;
    std::vector<double> numbers_;
    std::optional<DecodeError> error_;
};

template <class Each>
bool JsonReader::readArray(JsonValue value, Each each) {
    simdjson::ondemand::array array;
    if (const auto code = value.get_array().get(array)) return fail(code, "an array");
    if (!checkDepth()) return false;
    const JsonPlace inside{here_, JsonPlace::In::array};
    for (auto element : array) {
        JsonValue item;
        if (const auto code = element.get(item)) return fail(code, "a value");
        if (!each(item)) return false;
        ++here().index;
    }
    return true;
}

template <class Each>
bool JsonReader::readEntries(JsonValue value, Each each) {
    JsonObject object;
    if (!open(value, object)) return false;
    const JsonPlace inside{here_, JsonPlace::In::object};
    for (auto entry : object) {
        JsonKey raw;
        JsonValue content;
        std::string_view key;
        here().key = {};
        if (const auto code = entry.key().get(raw)) return fail(code, "a key");
        if (!keyText(raw, key)) return false;
        if (const auto code = entry.value().get(content)) return fail(code, "a value");
        here().hold(key);
        if (!each(here().key, content)) return false;
    }
    return true;
}

template <class... Bound>
bool JsonReader::readObject(JsonValue value, std::tuple<Bound...> fields) {
    JsonObject object;
    return open(value, object) && readObject(object, fields);
}

template <class... Bound>
bool JsonReader::readObject(JsonObject& object, std::tuple<Bound...> fields) {
    constexpr auto indices = std::index_sequence_for<Bound...>{};
    const JsonPlace inside{here_, JsonPlace::In::object};
    std::array<bool, sizeof...(Bound)> seen{};
    std::size_t expected = 0;
    for (auto entry : object) {
        JsonKey key;
        JsonValue value;
        here().key = {};
        if (const auto code = entry.key().get(key)) return fail(code, "a key");
        if (const auto code = entry.value().get(value)) return fail(code, "a value");
        if (!readKnown(indices, key, value, fields, seen, expected)) return false;
    }
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
        return (finishField(std::get<I>(fields), seen[I]) && ...);
    }(indices);
}

// Texts keep the order of the fields, mostly: the field after the last one is tried first.
template <std::size_t... I, class Fields>
bool JsonReader::readKnown(std::index_sequence<I...> /*indices*/, JsonKey key, JsonValue value, Fields& fields,
                           std::array<bool, sizeof...(I)>& seen, std::size_t& expected) {
    bool read = false;
    const auto take = [&]<std::size_t J>(bool isThis) {
        if (!isThis) return false;
        expected = J + 1;
        read = readField(std::get<J>(fields), value, seen[J]);
        return true;
    };
    const auto written = [&]<std::size_t J>() { return isWritten(key, std::get<J>(fields).field.key()); };
    const std::size_t from = expected;
    if ((take.template operator()<I>(I >= from && written.template operator()<I>()) || ...)) return read;
    if ((take.template operator()<I>(I < from && written.template operator()<I>()) || ...)) return read;

    std::string_view name;
    if (!keyText(key, name)) return false;
    const bool isEscaped = name.data() != key.raw();
    here().hold(name);
    const std::string_view held = here().held;
    if (isEscaped && (take.template operator()<I>(held == std::get<I>(fields).field.key()) || ...)) return read;
    return skip(value);
}

template <class Bound>
bool JsonReader::readField(const Bound& bound, JsonValue value, bool& seen) {
    here().key = bound.field.key();
    if (std::exchange(seen, true)) return fail(DecodeFault::duplicateKey, "the key stands twice");
    if constexpr (requires { bound.field.fallback; }) {
        bool isNull = false;
        if (!readNull(value, isNull)) return false;
        if (isNull) return bound.target = bound.field.fallback, true;
    }
    if constexpr (requires { bound.field.readsIfKnown; }) {
        return readIfKnown(*this, value, bound.target);
    } else {
        return readJson(*this, value, bound.target);
    }
}

template <class Bound>
bool JsonReader::finishField(const Bound& bound, bool seen) {
    if (seen) return true;
    if constexpr (requires { bound.field.fallback; }) {
        bound.target = bound.field.fallback;
        return true;
    } else if constexpr (requires { bound.target.has_value(); }) {
        return true;
    } else {
        here().key = bound.field.key();
        return fail(DecodeFault::missingKey, "the key is missing");
    }
}

} // namespace lumaro
