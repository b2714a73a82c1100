// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Payload.h"

#include <cstdint>
#include <optional>
#include <tuple>

namespace lumaro {

/// One thing on the board: where it is, who put it up, who last wrote it and when, and what it holds.
struct BoardItem {
    UUID id;
    Point center; ///< on the virtual canvas
    double rotationDegrees = 0;
    double scale = 1;
    std::int64_t z = 0; ///< stacking order, higher in front
    PartnerID author = PartnerID::a;
    Instant createdAt;
    Instant updatedAt;                  ///< what the last-writer rule compares
    std::optional<PartnerID> createdBy; ///< who put it up, where that was not `author`
    bool isLocked = false;              ///< hands leave it where and as it is; the rules of the board do not ask for it
    Payload payload;

    ItemKind kind() const { return payload.kind(); }
    PartnerID creator() const { return createdBy.value_or(author); }
    /// The creator stays who it was.
    void setAuthor(PartnerID writer);
    /// When it comes down of its own: only an unkept note does.
    std::optional<Instant> expiresAt() const;
    bool hasExpired(Instant now) const;
    /// Its unscaled size: by kind, but a photo's, a sticker's and a doodle's by what they hold.
    Size naturalSize() const;

    static constexpr bool hasOwnJson = true;
    /// The fields that need no kind to be read; the item's JSON has "kind" after "id", and ends with "payload".
    static constexpr auto fields() {
        return std::tuple{Field{"id", &BoardItem::id},
                          Field{"center", &BoardItem::center},
                          Field{"rotationDegrees", &BoardItem::rotationDegrees},
                          FieldOr{"scale", &BoardItem::scale, 1.0},
                          Field{"z", &BoardItem::z},
                          Field{"author", &BoardItem::author},
                          Field{"createdAt", &BoardItem::createdAt},
                          Field{"updatedAt", &BoardItem::updatedAt},
                          Field{"createdBy", &BoardItem::createdBy},
                          FieldIfSet{"locked", &BoardItem::isLocked}};
    }
    void hashInto(Hasher& hasher) const;
    bool operator==(const BoardItem&) const = default;
};

} // namespace lumaro
