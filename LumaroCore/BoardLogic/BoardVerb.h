// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/Edits.h"

#include <optional>
#include <variant>

namespace lumaro {

/// An act of one step on the board. It means the same whichever way it comes: by hand, from a terminal, or over a
/// socket.
struct BoardVerb {
    /// The id is made by whoever asks. Where an item of that id is on the board, or is remembered to have been taken
    /// down, nothing happens: what is asked twice is put up once. A note that has a time to come down gets a lifespan
    /// from the instant at which it is put up, whatever that time was.
    struct PutUp {
        UUID id;
        Payload payload;
        std::optional<Point> at; ///< none: an open spot
    };
    // These three bring the item to the front, with the doodles on it.
    struct Move {
        UUID item;
        Point to;
    };
    struct Turn {
        UUID item;
        double degrees = 0;
    };
    struct Resize {
        UUID item;
        double scale = 1;
    };
    struct ToFront {
        UUID item;
    };
    struct ToBack {
        UUID item;
    };
    struct TakeDown {
        UUID item;
    };
    struct Keep {
        UUID item;
    };
    struct Unkeep {
        UUID item;
    };
    // All other verbs refuse a locked item.
    struct Lock {
        UUID item;
    };
    struct Unlock {
        UUID item;
    };
    struct SetBackground {
        BackgroundID background = BackgroundID::butter;
    };

    std::variant<PutUp, Move, Turn, Resize, ToFront, ToBack, TakeDown, Keep, Unkeep, Lock, Unlock, SetBackground> value;
};

/// What the verb does to a board that its hand sees. No ops where everything is so already.
Edits::Result opsOf(const BoardVerb& verb, const Board& board, Hand hand);

} // namespace lumaro
