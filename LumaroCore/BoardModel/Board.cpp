// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardModel/Board.h"

#include "LumaroCore/BoardModel/Op.h"

#include <algorithm>

namespace lumaro {

const Payload::Value& Payload::emptyValue() {
    static const Value empty;
    return empty;
}

void BoardItem::setAuthor(PartnerID writer) {
    const PartnerID whose = creator();
    author = writer;
    createdBy = whose == writer ? std::nullopt : std::optional{whose};
}

std::optional<Instant> BoardItem::expiresAt() const {
    const auto* note = payload.as<NotePayload>();
    return note != nullptr ? note->expiresAt : std::nullopt;
}

bool BoardItem::hasExpired(Instant now) const {
    const auto expiry = expiresAt();
    return expiry && *expiry <= now;
}

Size BoardItem::naturalSize() const {
    if (const auto* photo = payload.as<PhotoPayload>()) return BoardSpec::printSize(photo->aspect);
    if (const auto* sticker = payload.as<StickerPayload>()) return BoardSpec::stickerSize(sticker->aspect);
    if (const auto* doodle = payload.as<DoodlePayload>()) return doodle->size();
    return BoardSpec::size(kind());
}

void BoardItem::hashInto(Hasher& hasher) const {
    std::apply([&](const auto&... field) { (hasher.add(this->*field.member), ...); }, fields());
    hasher.add(payload);
}

void Tombstone::hashInto(Hasher& hasher) const {
    hasher.add(itemId);
    hasher.add(deletedAt);
}

const BoardItem* Board::find(const UUID& id) const {
    const auto found = std::ranges::find(items, id, &BoardItem::id);
    return found == items.end() ? nullptr : &*found;
}

void Board::hashInto(Hasher& hasher) const {
    std::apply([&](const auto&... field) { (hasher.add(this->*field.member), ...); }, fields());
    hasher.add(tombstones);
}

std::vector<Op> understood(std::vector<ForwardCompatibleOp> elements) {
    std::vector<Op> ops;
    ops.reserve(elements.size());
    for (auto& element : elements) {
        if (element.op) ops.push_back(std::move(*element.op));
    }
    return ops;
}

} // namespace lumaro
