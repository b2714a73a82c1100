// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"

#include <optional>
#include <string_view>
#include <tuple>
#include <variant>

namespace lumaro {

/// Puts an item up, or in place of its older version: always the whole item.
struct Upsert {
    static constexpr std::string_view tag = "upsert";
    BoardItem item;

    static constexpr auto fields() { return std::tuple{Field{"item", &Upsert::item}}; }
    bool operator==(const Upsert&) const = default;
};

/// Takes an item down.
struct Delete {
    static constexpr std::string_view tag = "delete";
    UUID itemId;
    Instant deletedAt;

    static constexpr auto fields() {
        return std::tuple{Field{"itemId", &Delete::itemId}, Field{"deletedAt", &Delete::deletedAt}};
    }
    bool operator==(const Delete&) const = default;
};

struct SetBackground {
    static constexpr std::string_view tag = "setBackground";
    BackgroundID background = BackgroundID::butter;

    static constexpr auto fields() { return std::tuple{Field{"background", &SetBackground::background}}; }
    bool operator==(const SetBackground&) const = default;
};

/// One change to the board.
struct Op {
    using Value = std::variant<Upsert, Delete, SetBackground>;
    Value value;

    void hashInto(Hasher& hasher) const { hasher.add(value); }
    bool operator==(const Op&) const = default;
};

/// An element of a list of ops from a peer that may be newer: it holds none where the op concerns an item of a kind
/// this version does not know.
struct ForwardCompatibleOp {
    std::optional<Op> op;
};

/// The ops that are held, in order.
std::vector<Op> understood(std::vector<ForwardCompatibleOp> elements);

} // namespace lumaro
