// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/JsonWriter.h"

#include "LumaroCore/Support/JsonNumber.h"
#include "LumaroCore/Support/Wire.h"

#include <simdjson.h>

#include <array>
#include <charconv>
#include <cmath>

namespace lumaro {
namespace {

constexpr std::array<bool, 256> needsEscape = [] {
    std::array<bool, 256> table{};
    for (std::size_t c = 0; c < 0x20; ++c) table[c] = true;
    table['"'] = true;
    table['\\'] = true;
    return table;
}();

void appendEscaped(std::string& out, char c) {
    switch (c) {
    case '"': out.append("\\\""); return;
    case '\\': out.append("\\\\"); return;
    case '\b': out.append("\\b"); return;
    case '\f': out.append("\\f"); return;
    case '\n': out.append("\\n"); return;
    case '\r': out.append("\\r"); return;
    case '\t': out.append("\\t"); return;
    default: break;
    }
    constexpr std::string_view digits = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(c);
    out.append("\\u00");
    out.push_back(digits[value >> 4]);
    out.push_back(digits[value & 15]);
}

} // namespace

void JsonWriter::freeKey(std::string_view text) {
    quoted(text);
    out_.push_back(':');
}

void JsonWriter::integer(std::int64_t value) {
    std::array<char, 24> text; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by to_chars
    char* end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    *end++ = ',';
    out_.append(text.data(), end);
}

void JsonWriter::number(double value) {
    if (!std::isfinite(value)) {
        fail(EncodeFault::notFinite);
        value = 0;
    }
    std::array<char, maxDoubleText + 1> text; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by writeDouble
    char* end = writeDouble(text.data(), value);
    *end++ = ',';
    out_.append(text.data(), end);
}

void JsonWriter::string(std::string_view text) {
    quoted(text);
    out_.push_back(',');
}

void JsonWriter::quoted(std::string_view text) {
    out_.push_back('"');
    std::size_t copied = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!needsEscape[static_cast<unsigned char>(text[i])]) continue;
        out_.append(text.substr(copied, i - copied));
        appendEscaped(out_, text[i]);
        copied = i + 1;
    }
    out_.append(text.substr(copied));
    out_.push_back('"');
}

void JsonWriter::fail(EncodeFault fault) {
    if (error_) return;
    // A written key is "name": with its quotes and colon.
    error_ = EncodeError{fault, key_.empty() ? std::string{} : std::string{key_.substr(1, key_.size() - 3)}};
}

std::expected<void, EncodeError> JsonWriter::finish() {
    if (out_.size() > start_ && out_.back() == ',') out_.pop_back();
    if (!error_ && !simdjson::validate_utf8(out_.data() + start_, out_.size() - start_)) {
        key_ = {};
        fail(EncodeFault::invalidUtf8);
    }
    if (error_) return std::unexpected(*error_);
    return {};
}

void writeJson(JsonWriter& writer, Instant value) {
    writer.integer(Wire::milliseconds(value));
}

void writeJson(JsonWriter& writer, const std::vector<Point>& points) {
    writer.openArray();
    for (const auto& point : points) {
        writer.number(point.x);
        writer.number(point.y);
    }
    writer.closeArray();
}

} // namespace lumaro
