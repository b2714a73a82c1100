// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/EditSource.h"

#include "LumaroCore/Support/Wire.h"
#include "Samples/Samples.h"

#include <algorithm>
#include <string>
#include <utility>

namespace lumaro {
namespace {

// As long as a message that somebody sticks to a board.
Payload note(std::mt19937_64& random) {
    std::string text;
    while (text.size() < 105) {
        const auto letters = samples::pick<std::size_t>(random, 2, 8);
        for (std::size_t i = 0; i < letters; ++i)
            text.push_back(static_cast<char>(samples::pick<int>(random, 'a', 'z')));
        text.push_back(' ');
    }
    return samples::plainNote(std::move(text));
}

Point anywhere(std::mt19937_64& random) {
    return {samples::pick(random, 1000, 15000) / 10.0, samples::pick(random, 1000, 9000) / 10.0};
}

} // namespace

EditSource::EditSource(std::uint64_t seed, std::size_t itemCount) : random_(seed) {
    for (std::size_t i = 0; i < itemCount; ++i) {
        BoardItem item;
        item.id = freshId();
        item.center = anywhere(random_);
        item.rotationDegrees = samples::pick(random_, -400, 400) / 100.0;
        item.z = static_cast<std::int64_t>(i) + 1;
        item.author = i % 2 == 0 ? PartnerID::a : PartnerID::b;
        item.payload = note(random_);
        items_.push_back(std::move(item));
    }
}

UUID EditSource::freshId() {
    UUID id;
    for (auto& byte : id.bytes) byte = static_cast<std::uint8_t>(random_());
    return id;
}

ClientMessage::Ops EditSource::board(Instant now) {
    ClientMessage::Ops batch{.batchId = freshId(), .ops = {}};
    for (BoardItem& item : items_) {
        item.createdAt = item.updatedAt = Wire::truncatedToMilliseconds(now);
        batch.ops.push_back({Upsert{item}});
    }
    return batch;
}

ClientMessage::Ops EditSource::edit(PartnerID side, Instant now) {
    // A's notes stand at the even places, b's at the odd ones.
    const std::size_t first = side == PartnerID::a ? 0 : 1;
    const std::size_t own = (items_.size() + 1 - first) / 2;
    BoardItem& item = items_.at(first + 2 * samples::pick<std::size_t>(random_, 0, own - 1));
    item.updatedAt = std::max(Wire::truncatedToMilliseconds(now), item.updatedAt + std::chrono::milliseconds{1});
    item.center = anywhere(random_);
    if (++edits_ % 4 == 0) item.payload = note(random_);
    return {.batchId = freshId(), .ops = {{Upsert{item}}}};
}

} // namespace lumaro
