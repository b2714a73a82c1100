// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"
#include "Samples/Samples.h"

namespace lumaro {

inline const UUID noteId = samples::numberedId(1);
inline const UUID drawnId = samples::numberedId(2);
inline const UUID chipId = samples::numberedId(3);

/// A note with a doodle drawn 100 points to its right, and a countdown in front of both, all put up by b.
inline Board smallBoard() {
    Board board;
    const Payload payloads[]{
        samples::plainNote("hi"),
        DoodlePayload{.width = 30, .height = 30, .strokes = {{"ink", 4, {{5, 5}, {25, 25}}}}, .on = noteId},
        CountdownPayload{samples::noon, "trip"}};
    for (std::uint64_t i = 0; i < 3; ++i) {
        auto& item = board.items.emplace_back();
        item.id = samples::numberedId(i + 1);
        item.center = {i == 1 ? 600.0 : 500.0, 500};
        item.z = static_cast<std::int64_t>(i);
        item.author = PartnerID::b;
        item.updatedAt = samples::noon - std::chrono::hours{1};
        item.payload = payloads[i];
    }
    return board;
}

} // namespace lumaro
