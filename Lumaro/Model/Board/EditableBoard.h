// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/Apply.h"
#include "LumaroCore/BoardModel/Op.h"

#include <cstdint>
#include <expected>
#include <string_view>
#include <vector>

namespace lumaro {

/// Why an act was refused; nothing of it was shown, stored or sent.
enum class ActFault : std::uint8_t {
    windowFull,
    tooLarge,   ///< an item is over its size
    outOfDate,  ///< the board holds something newer, or took the item down since
    invalid,    ///< a payload or a place that no board takes
    notStored,  ///< this device cannot keep it: there is no outbox to put it in
    notOnBoard, ///< this device is on no board
};

/// What people are told.
std::string_view textOf(ActFault fault);

/// What an act is refused for when an op of it would be.
ActFault faultOf(RejectionReason reason);

/// The board on which a person's hands lie. Used on the main thread.
class EditableBoard {
public:
    EditableBoard() = default;
    EditableBoard(const EditableBoard&) = delete;
    EditableBoard& operator=(const EditableBoard&) = delete;
    virtual ~EditableBoard() = default;

    /// As this device shows it.
    virtual const Board& board() const = 0;
    /// Shows an act at once and hands it on to be stored and sent, as one batch whose id this answers. An act that the
    /// shown board would refuse in part is refused as a whole. What has at most `BoardSpec::maxOpsPerBatch` ops is one
    /// batch; a longer one becomes several, and this answers the id of the last.
    virtual std::expected<UUID, ActFault> act(std::vector<Op> ops) = 0;
};

} // namespace lumaro
