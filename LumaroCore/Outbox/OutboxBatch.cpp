// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Outbox/OutboxBatch.h"

#include "LumaroCore/BoardModel/BoardJson.h"
#include "LumaroCore/Support/JsonCodec.h"

#include <array>
#include <cstdio>

namespace lumaro {
namespace {

// How a batch stands in its file: the id in the standard form, upper case.
struct StoredBatch {
    std::string batchId;
    std::vector<Op> ops;
    Instant createdAt;
    std::int64_t sequence = 0;

    static constexpr auto fields() {
        return std::tuple{Field{"batchId", &StoredBatch::batchId}, Field{"ops", &StoredBatch::ops},
                          Field{"createdAt", &StoredBatch::createdAt}, Field{"sequence", &StoredBatch::sequence}};
    }
};

} // namespace

bool readJson(JsonReader& reader, JsonValue value, OutboxBatch& out) {
    StoredBatch stored;
    if (!reader.readObject(value, bindFields(stored))) return false;
    const auto id = UUID::parse(stored.batchId);
    if (!id) return reader.failUnder("batchId", DecodeFault::invalidValue, "Not a UUID: " + stored.batchId);
    out = {*id, std::move(stored.ops), stored.createdAt, stored.sequence};
    return true;
}

void writeJson(JsonWriter& writer, const OutboxBatch& batch) {
    writeJson(writer, StoredBatch{batch.batchId.upperString(), batch.ops, batch.createdAt, batch.sequence});
}

std::string OutboxBatch::fileName() const {
    std::array<char, 24> digits{};
    const int length = std::snprintf(digits.data(), digits.size(), "%012lld", static_cast<long long>(sequence));
    return std::string(digits.data(), static_cast<std::size_t>(length)) + "-" + batchId.lowerString() + ".json";
}

void OutboxBatch::hashInto(Hasher& hasher) const {
    hasher.add(batchId);
    hasher.add(ops);
    hasher.add(createdAt);
    hasher.add(sequence);
}

template std::expected<OutboxBatch, DecodeError> Wire::decode<OutboxBatch>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<OutboxBatch>(const OutboxBatch& value);

} // namespace lumaro
