// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/JsonReader.h"

#include "LumaroCore/Support/JsonNumber.h"

#include <cstring>

namespace lumaro {
namespace {

// Buffers for texts up to this size are kept by each thread for the next text; a larger text brings its own.
constexpr std::size_t keptCapacity = 64 * 1024;

std::string_view withoutTrailingSpace(std::string_view token) {
    const auto last = token.find_last_not_of(" \t\r\n");
    return token.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

// The library's token of a string runs from its opening quote to the next token.
std::size_t contentSize(std::string_view stringToken) {
    return stringToken.rfind('"') - 1;
}

} // namespace

bool JsonReader::fail(DecodeFault fault, std::string message) {
    if (!error_) error_ = DecodeError{fault, pathText(), std::move(message)};
    return false;
}

bool JsonReader::failUnder(std::string_view key, DecodeFault fault, std::string message) {
    const Inside inside{*this, false};
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

std::string JsonReader::pathText() const {
    std::string path = "$";
    for (const auto& step : path_) {
        if (step.isIndex) {
            path.append("[").append(std::to_string(step.index)).append("]");
        } else if (step.key.data() != nullptr) {
            path.append(".").append(step.key);
        }
    }
    return path;
}

bool JsonReader::open(JsonValue value, JsonObject& out) {
    if (const auto code = value.get_object().get(out)) return fail(code, "an object");
    return checkDepth();
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
    const Inside inside{*this, false};
    here().key = key;
    bool found = false;
    for (auto entry : object) {
        JsonKey raw;
        JsonValue value;
        if (const auto code = entry.key().get(raw)) return failKey(code);
        std::string_view name;
        if (!isWritten(raw, key) && (!keyText(raw, name) || name != key)) continue;
        if (const auto code = entry.value().get(value)) return fail(code, "a value");
        if (!readJson(*this, value, out)) return false;
        found = true;
        break;
    }
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

bool JsonReader::text(JsonValue value, std::string_view& out) {
    const std::string_view token = value.raw_json_token();
    JsonKey raw;
    if (const auto code = value.get_raw_json_string().get(raw)) return fail(code, "a string");
    const auto size = contentSize(token);
    if (std::memchr(raw.raw(), '\\', size) != nullptr) return unescape(raw, size, out);
    out = {raw.raw(), size};
    return true;
}

std::optional<std::int64_t> JsonReader::wholeNumber(JsonValue value) {
    std::int64_t whole = 0;
    if (value.get_int64().get(whole) == simdjson::SUCCESS) return whole;
    const auto number = parseNumber(withoutTrailingSpace(value.raw_json_token()));
    return number.form == NumberForm::whole ? std::optional{number.value} : std::nullopt;
}

bool JsonReader::integer(JsonValue value, std::int64_t& out) {
    if (const auto whole = wholeNumber(value)) {
        out = *whole;
        return true;
    }
    switch (parseNumber(withoutTrailingSpace(value.raw_json_token())).form) {
    case NumberForm::large: return fail(DecodeFault::outOfRange, "the number does not fit in 64 bits");
    case NumberForm::fractional: return fail(DecodeFault::wrongType, "expected a whole number");
    case NumberForm::whole:
    case NumberForm::malformed: break;
    }
    return fail(value.get_double().error(), "a whole number");
}

bool JsonReader::number(JsonValue value, double& out) {
    const auto code = value.get_double().get(out);
    if (code == simdjson::SUCCESS) return true;
    const auto token = withoutTrailingSpace(value.raw_json_token());
    if (parseNumber(token).form != NumberForm::malformed) {
        return fail(DecodeFault::outOfRange, "the number is out of range");
    }
    return fail(code, "a number");
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

bool readJson(JsonReader& reader, JsonValue value, std::vector<Point>& out) {
    auto& numbers = reader.numbers_;
    numbers.clear();
    const bool read =
        reader.readArray(value, [&](JsonValue element) { return reader.number(element, numbers.emplace_back()); });
    if (!read) return false;
    if (numbers.size() % 2 != 0) return reader.fail(DecodeFault::invalidValue, "points come in pairs");
    out.resize(numbers.size() / 2);
    for (std::size_t i = 0; i < out.size(); ++i)
        out[i] = {numbers[2 * i], numbers[2 * i + 1]};
    return true;
}

std::optional<DecodeError> decodeWith(std::string text, bool (*read)(JsonReader&, JsonValue, void*), void* target) {
    thread_local simdjson::ondemand::parser kept;
    std::optional<simdjson::ondemand::parser> own;
    const std::size_t size = text.size();
    auto& parser = size <= keptCapacity ? kept : own.emplace();
    if (size <= keptCapacity && kept.capacity() == 0 && kept.allocate(keptCapacity) != simdjson::SUCCESS) {
        return DecodeError{DecodeFault::tooLarge, "$", "no memory to read the text"};
    }

    text.append(simdjson::SIMDJSON_PADDING, '\0');
    JsonReader reader{parser};
    simdjson::ondemand::document document;
    JsonValue root;
    if (const auto code = parser.iterate(text.data(), size, text.size()).get(document)) {
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
