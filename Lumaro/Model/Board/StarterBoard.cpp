// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/StarterBoard.h"

#include "LumaroCore/BoardLogic/Apply.h"
#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/NoteRender/PMNode.h"
#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/Wire.h"

#include <utility>

namespace lumaro {
namespace {

// The same on every device and at every start.
constexpr UUID greetingId{{'l', 'u', 'm', 'a', 'r', 'o', 0x40, 0, 0x80, 0, 0, 0, 0, 0, 0, 1}};

} // namespace

Board starterBoard(Instant now) {
    Board board;
    board.updatedAt = Wire::truncatedToMilliseconds(now);
    NotePayload greeting{pm::docOfLines("a window for two\nwhatever you stick here, they see there"), "butter", "brass",
                         std::nullopt};
    const Point middle{BoardSpec::canvasRect.size.width / 2, BoardSpec::canvasRect.size.height / 2};
    const auto ops = Edits::putUp(board, greetingId, std::move(greeting), middle, {PartnerID::a, board.updatedAt});
    if (!ops) fatal("the starter board cannot be made");
    return BoardLogic::apply(*ops, std::move(board), now).board;
}

} // namespace lumaro
