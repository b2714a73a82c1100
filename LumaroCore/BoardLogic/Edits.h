// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Op.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <vector>

namespace lumaro {

/// Who edits, and when.
struct Hand {
    PartnerID author = PartnerID::a;
    Instant now;
};

/// Why an edit makes no ops.
enum class EditFault : std::uint8_t {
    noSuchItem,   ///< the item is not on the board
    wrongKind,    ///< the item's kind has no such edit
    cannotResize, ///< items of this kind keep their size
    notFinite,    ///< a place, tilt or scale that is no number
    locked,       ///< the item is locked, or what it is drawn on is
};

/// What people's hands do to a board, as ops. Pure functions of the board that the hand sees.
///
/// Every version is stamped with the later of now and a millisecond after the version it edits, so that a device whose
/// clock is slow can still edit what it sees. Doodles drawn on an item move, turn, grow, rise and sink with it.
namespace Edits {

using Result = std::expected<std::vector<Op>, EditFault>;

/// A new item on top, centred on `at` or else in an open spot, with the tilt of its id.
Result putUp(const Board& board, const UUID& id, Payload payload, std::optional<Point> at, Hand hand);

/// Centres the item on the place nearest to `center` on the canvas.
Result move(const Board& board, const UUID& id, Point center, Hand hand);
/// Tilts the item to the valid tilt nearest to `degrees`.
Result turn(const Board& board, const UUID& id, double degrees, Hand hand);
/// Scales the item to the valid scale at which `scale` comes to rest.
Result resize(const Board& board, const UUID& id, double scale, Hand hand);
/// Brings the item in front of all others, the doodles on it in front of it.
Result raise(const Board& board, const UUID& id, Hand hand);
/// Puts the item behind all others, the doodles on it in front of it.
Result lower(const Board& board, const UUID& id, Hand hand);

/// Replaces what the item holds by a payload of the same kind.
Result changePayload(const Board& board, const UUID& id, Payload payload, Hand hand);
/// Replaces the text of a note.
Result changeText(const Board& board, const UUID& id, PMNode text, Hand hand);
/// Lets a note stay up.
Result keep(const Board& board, const UUID& id, Hand hand);
/// Lets a note come down a lifespan from now.
Result unkeep(const Board& board, const UUID& id, Hand hand);
/// Leaves the item as it is until it is unlocked: all other edits refuse it.
Result lock(const Board& board, const UUID& id, Hand hand);
Result unlock(const Board& board, const UUID& id, Hand hand);

/// Takes the item down and, by the rules of the board, the doodles on it.
Result takeDown(const Board& board, const UUID& id, Hand hand);

std::vector<Op> setBackground(BackgroundID background);

/// The ops in order, in batches that each stay within the cap.
std::vector<std::vector<Op>> batches(std::vector<Op> ops);

} // namespace Edits
} // namespace lumaro
