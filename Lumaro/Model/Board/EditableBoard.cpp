// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/EditableBoard.h"

#include <utility>

namespace lumaro {

std::string_view textOf(ActFault fault) {
    switch (fault) {
    case ActFault::windowFull: return "the window is full — take something down first";
    case ActFault::tooLarge: return "that's a little too much for one thing — make it smaller";
    case ActFault::outOfDate: return "it changed while you were at it — have another look";
    case ActFault::invalid: return "that can't go up on the window";
    case ActFault::notStored: return "that couldn't be kept on this computer — is the disk full?";
    case ActFault::notOnBoard: return "you're not on a board yet — bring the two of you together first";
    }
    std::unreachable();
}

ActFault faultOf(RejectionReason reason) {
    switch (reason) {
    case RejectionReason::itemCapExceeded: return ActFault::windowFull;
    case RejectionReason::itemTooLarge: return ActFault::tooLarge;
    case RejectionReason::stale:
    case RejectionReason::deleted: return ActFault::outOfDate;
    case RejectionReason::batchCapExceeded:
    case RejectionReason::invalidRotation:
    case RejectionReason::invalidScale: return ActFault::invalid;
    }
    std::unreachable();
}

} // namespace lumaro
