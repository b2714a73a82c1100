// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/Instant.h"
#include "LumaroCore/Support/JsonError.h"
#include "LumaroCore/Support/Plane.h"
#include "LumaroCore/Support/UUID.h"

#include <concepts>
#include <cstdint>
#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace lumaro {

/// Appends one JSON text to a string, without white space and with "/" unescaped.
///
/// A type is written by an overload of `writeJson(JsonWriter&, const T&)`, found by its argument; types with `fields()`
/// need none. The first failure is kept and the rest is written all the same: `finish` then gives the failure.
class JsonWriter {
public:
    /// `depth` is how many arrays and objects will surround the text, counted towards `maxJsonDepth`.
    explicit JsonWriter(std::string& out, int depth = 0) : out_(out), start_(out.size()), depth_(depth) {}

    void openObject() { open('{'); }
    void closeObject() { close('}'); }
    void openArray() { open('['); }
    void closeArray() { close(']'); }

    /// `written` has its quotes and its colon.
    void key(std::string_view written) {
        out_.append(written);
        key_ = written;
    }
    /// A key that may need escapes.
    void freeKey(std::string_view text);

    void null() { out_.append("null,"); }
    void boolean(bool value) { out_.append(value ? "true," : "false,"); }
    void integer(std::int64_t value);
    void number(double value);
    void string(std::string_view text);
    /// A string known to hold nothing that is escaped.
    void plainString(std::string_view text) {
        out_.push_back('"');
        out_.append(text);
        out_.append("\",");
    }

    /// Ends the text; it is in the string from where the writer began, unless this gives an error.
    [[nodiscard]] std::expected<void, EncodeError> finish();

private:
    void open(char bracket) {
        out_.push_back(bracket);
        if (++depth_ > maxJsonDepth) fail(EncodeFault::tooDeep);
    }
    // Every value is followed by a comma; closing takes the last one back.
    void close(char bracket) {
        if (out_.back() == ',') {
            out_.back() = bracket;
        } else {
            out_.push_back(bracket);
        }
        out_.push_back(',');
        --depth_;
    }
    void quoted(std::string_view text);
    void fail(EncodeFault fault);

    std::string& out_;
    std::size_t start_;
    int depth_;
    std::string_view key_;
    std::optional<EncodeError> error_;
};

inline void writeJson(JsonWriter& writer, double value) {
    writer.number(value);
}
inline void writeJson(JsonWriter& writer, std::int64_t value) {
    writer.integer(value);
}
template <std::same_as<bool> B>
void writeJson(JsonWriter& writer, B value) {
    writer.boolean(value);
}
inline void writeJson(JsonWriter& writer, const std::string& value) {
    writer.string(value);
}
inline void writeJson(JsonWriter& writer, const UUID& value) {
    const auto text = value.lowerText();
    writer.plainString({text.data(), text.size()});
}
void writeJson(JsonWriter& writer, Instant value);
/// A list of points is one flat array: x0, y0, x1, y1, ...
void writeJson(JsonWriter& writer, const std::vector<Point>& points);

template <NamedEnum E>
void writeJson(JsonWriter& writer, E value) {
    writer.plainString(nameOf(value));
}

template <class T>
void writeJson(JsonWriter& writer, const std::vector<T>& values) {
    writer.openArray();
    for (const auto& value : values) writeJson(writer, value);
    writer.closeArray();
}

template <class T>
void writeJson(JsonWriter& writer, const std::map<std::string, T>& entries) {
    writer.openObject();
    for (const auto& [key, value] : entries) {
        writer.freeKey(key);
        writeJson(writer, value);
    }
    writer.closeObject();
}

template <class T>
void writeJson(JsonWriter& writer, const std::map<UUID, T>& entries) {
    writer.openObject();
    for (const auto& [key, value] : entries) {
        writer.freeKey(key.lowerString());
        writeJson(writer, value);
    }
    writer.closeObject();
}

template <class T>
void writeValueUnderKey(JsonWriter& writer, std::string_view writtenKey, const T& value) {
    writer.key(writtenKey);
    writeJson(writer, value);
}
template <class T>
void writeValueUnderKey(JsonWriter& writer, std::string_view writtenKey, const std::optional<T>& value) {
    if (value) writeValueUnderKey(writer, writtenKey, *value);
}

template <class Bound, class T>
void writeField(JsonWriter& writer, const Bound& field, const T& value) {
    if constexpr (IsFlag<Bound>) {
        if (!(value.*field.member)) return;
    }
    writeValueUnderKey(writer, {field.written.data(), field.written.size()}, value.*field.member);
}

/// The fields of a value, without the braces around them.
template <HasFields T>
void writeFields(JsonWriter& writer, const T& value) {
    static constexpr auto fields = T::fields();
    std::apply([&](const auto&... field) { (writeField(writer, field, value), ...); }, fields);
}

template <IsFieldsAlone T>
void writeJson(JsonWriter& writer, const T& value) {
    writer.openObject();
    writeFields(writer, value);
    writer.closeObject();
}

} // namespace lumaro
