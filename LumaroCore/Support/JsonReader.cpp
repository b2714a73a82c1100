// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/JsonReader.h"

#include "LumaroCore/Support/JsonNumber.h"
#include "LumaroCore/Support/JsonRead.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace lumaro {
namespace {

// Buffers for texts up to this size are kept by each thread for the next text; a larger text brings its own.
constexpr std::size_t keptCapacity = 65536;

// What the library needs for a text of up to `capacity` bytes: a padded copy of it, and the parser's index.
struct Buffers {
    explicit Buffers(std::size_t capacity) : padded(new char[capacity + simdjson::SIMDJSON_PADDING]), size(capacity) {}

    simdjson::simdjson_result<simdjson::ondemand::document> open(std::string_view text) {
        if (parser.capacity() < size) {
            if (const auto code = parser.allocate(size)) return code;
        }
        std::ranges::copy(text, padded.get());
        std::memset(padded.get() + text.size(), 0, simdjson::SIMDJSON_PADDING);
        return parser.iterate(padded.get(), text.size(), text.size() + simdjson::SIMDJSON_PADDING);
    }

    std::unique_ptr<char[]> padded;
    std::size_t size;
    simdjson::ondemand::parser parser;
};

std::string_view withoutTrailingSpace(std::string_view token) {
    const auto last = token.find_last_not_of(" \t\r\n");
    return token.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

} // namespace

bool JsonReader::fail(DecodeFault fault, std::string message) {
    if (!error_) error_ = DecodeError{fault, JsonPlace::path(here_), std::move(message)};
    return false;
}

bool JsonReader::failUnder(std::string_view key, DecodeFault fault, std::string message) {
    const JsonPlace inside{here_, JsonPlace::In::object};
    here().key = key;
    return fail(fault, std::move(message));
}

bool JsonReader::fail(simdjson::error_code code, std::string_view expected) {
    switch (code) {
    case simdjson::INCORRECT_TYPE: return fail(DecodeFault::wrongType, "expected " + std::string{expected});
    case simdjson::UTF8_ERROR: return fail(DecodeFault::invalidUtf8, "the text is not UTF-8");
    case simdjson::CAPACITY:
    case simdjson::MEMALLOC: return fail(DecodeFault::tooLarge, "the text is too large");
    case simdjson::EMPTY: return fail(DecodeFault::malformed, "the text is empty");
    default: return fail(DecodeFault::malformed, "not JSON");
    }
}

bool JsonReader::forgive() {
    if (!error_) return true;
    switch (error_->fault) {
    case DecodeFault::malformed:
    case DecodeFault::invalidUtf8:
    case DecodeFault::trailingContent:
    case DecodeFault::tooDeep:
    case DecodeFault::tooLarge: return false;
    case DecodeFault::missingKey:
    case DecodeFault::duplicateKey:
    case DecodeFault::wrongType:
    case DecodeFault::outOfRange:
    case DecodeFault::invalidValue: break;
    }
    error_.reset();
    return true;
}

bool JsonReader::unescape(JsonKey raw, std::size_t size, std::string_view& out) {
    // The library writes whole blocks, up to its padding beyond the end.
    unescaped_.resize(size + 2 * simdjson::SIMDJSON_PADDING);
    std::uint8_t* end = unescaped_.data();
    if (const auto code = parser_.unescape(raw, end).get(out)) {
        return fail(code == simdjson::STRING_ERROR ? simdjson::TAPE_ERROR : code, "a string");
    }
    return true;
}

bool JsonReader::keyText(JsonKey key, std::string_view& out) {
    const char* start = key.raw();
    const char* end = start;
    bool escaped = false;
    for (; *end != '"'; ++end) {
        if (*end == '\\') {
            escaped = true;
            ++end;
        }
    }
    const auto size = static_cast<std::size_t>(end - start);
    if (escaped) return unescape(key, size, out);
    out = {start, size};
    return true;
}

bool JsonReader::peekString(JsonObject& object, std::string_view key, std::string& out) {
    const JsonPlace inside{here_, JsonPlace::In::object};
    bool found = false;
    for (auto entry : object) {
        JsonKey raw;
        JsonValue value;
        std::string_view name;
        if (const auto code = entry.key().get(raw)) return fail(code, "a key");
        if (!isWritten(raw, key) && !keyText(raw, name)) return false;
        if (!isWritten(raw, key) && name != key) continue;
        here().key = key;
        if (const auto code = entry.value().get(value)) return fail(code, "a value");
        if (!readJson(*this, value, out)) return false;
        found = true;
        break;
    }
    here().key = key;
    if (!found) return fail(DecodeFault::missingKey, "the key is missing");
    if (const auto code = object.reset().error()) return fail(code, "an object");
    return true;
}

bool JsonReader::skip(JsonValue value) {
    simdjson::ondemand::json_type type{};
    if (const auto code = value.type().get(type)) return fail(code, "a value");
    const auto scalar = withoutTrailingSpace(value.raw_json_token());
    switch (type) {
    case simdjson::ondemand::json_type::array:
        return readArray(value, [this](JsonValue element) { return skip(element); });
    case simdjson::ondemand::json_type::object: {
        JsonObject object;
        return open(value, object) && skipObject(object);
    }
    case simdjson::ondemand::json_type::string: {
        std::string_view ignored;
        return text(value, ignored);
    }
    case simdjson::ondemand::json_type::number:
        return parseNumber(scalar).form != NumberForm::malformed || fail(DecodeFault::malformed, "not JSON");
    case simdjson::ondemand::json_type::boolean:
        return scalar == "true" || scalar == "false" || fail(DecodeFault::malformed, "not JSON");
    case simdjson::ondemand::json_type::null: return scalar == "null" || fail(DecodeFault::malformed, "not JSON");
    }
    return fail(DecodeFault::malformed, "not JSON");
}

bool JsonReader::skipObject(JsonObject& object) {
    return readObject(object, std::tuple<>{});
}

bool JsonReader::skipFromStart(JsonObject& object) {
    if (const auto code = object.reset().error()) return fail(code, "an object");
    return skipObject(object);
}

std::optional<std::int64_t> JsonReader::carefulWholeNumber(JsonValue value) {
    const auto number = parseNumber(withoutTrailingSpace(value.raw_json_token()));
    return number.form == NumberForm::whole ? std::optional{number.value} : std::nullopt;
}

bool JsonReader::failToken(std::string_view token, std::string_view expected) {
    // A text that was cut off here has no token.
    const bool isOtherType = !token.empty() && std::string_view{"\"[{tfn"}.contains(token.front());
    return isOtherType ? fail(simdjson::INCORRECT_TYPE, expected) : fail(DecodeFault::malformed, "not JSON");
}

bool JsonReader::failInteger(JsonValue value) {
    const auto token = withoutTrailingSpace(value.raw_json_token());
    switch (parseNumber(token).form) {
    case NumberForm::large: return fail(DecodeFault::outOfRange, "the number does not fit in 64 bits");
    case NumberForm::fractional: return fail(DecodeFault::wrongType, "expected a whole number");
    case NumberForm::whole:
    case NumberForm::malformed: break;
    }
    return failToken(token, "a whole number");
}

bool JsonReader::failNumber(JsonValue value) {
    const auto token = withoutTrailingSpace(value.raw_json_token());
    if (parseNumber(token).form != NumberForm::malformed) {
        return fail(DecodeFault::outOfRange, "the number is out of range");
    }
    return failToken(token, "a number");
}

bool JsonReader::failBoolean(JsonValue value) {
    return skip(value) && fail(DecodeFault::wrongType, "expected true or false");
}

bool JsonReader::points(JsonValue value, std::vector<Point>& out) {
    numbers_.clear();
    if (!readArray(value, [this](JsonValue element) { return number(element, numbers_.emplace_back()); })) return false;
    if (numbers_.size() % 2 != 0) return fail(DecodeFault::invalidValue, "points come in pairs");
    out.resize(numbers_.size() / 2);
    for (std::size_t i = 0; i < out.size(); ++i) out[i] = {numbers_[2 * i], numbers_[2 * i + 1]};
    return true;
}

bool readJson(JsonReader& reader, JsonValue value, std::string& out) {
    std::string_view text;
    if (!reader.text(value, text)) return false;
    out.assign(text);
    return true;
}

bool readJson(JsonReader& reader, JsonValue value, UUID& out) {
    std::string_view text;
    if (!reader.text(value, text)) return false;
    const auto id = UUID::parse(text);
    if (!id) return reader.fail(DecodeFault::invalidValue, "Not a UUID: " + std::string{text});
    out = *id;
    return true;
}

bool readJson(JsonReader& reader, JsonValue value, Instant& out) {
    std::int64_t count = 0;
    if (!reader.integer(value, count)) return false;
    const auto instant = Wire::date(count);
    if (!instant) return reader.fail(DecodeFault::outOfRange, "the instant is out of range");
    out = *instant;
    return true;
}

std::optional<DecodeError> decodeWith(std::string_view text, bool (*read)(JsonReader&, JsonValue, void*),
                                      void* target) {
    thread_local Buffers kept{keptCapacity}; // NOLINT(misc-const-correctness): bound to `buffers` below
    std::optional<Buffers> own;
    auto& buffers = text.size() <= keptCapacity ? kept : own.emplace(text.size());

    JsonReader reader{buffers.parser};
    simdjson::ondemand::document document;
    JsonValue root;
    if (const auto code = buffers.open(text).get(document)) {
        reader.fail(code, "an object");
    } else if (const auto scalar = document.get_value().get(root)) {
        reader.fail(scalar == simdjson::SCALAR_DOCUMENT_AS_VALUE ? simdjson::INCORRECT_TYPE : scalar,
                    "an object or an array");
    } else if (read(reader, root, target) && document.current_location().error() != simdjson::OUT_OF_BOUNDS) {
        reader.fail(DecodeFault::trailingContent, "something follows the value");
    }
    return reader.error();
}

} // namespace lumaro
