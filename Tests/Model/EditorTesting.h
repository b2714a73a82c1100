// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/EditorModel.h"
#include "LumaroCore/BoardLogic/SharedBoard.h"
#include "Tests/BoardLogic/DeskBoard.h"
#include "Tests/Fakes/CountingUUIDs.h"
#include "Tests/Fakes/ManualClock.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace lumaro {

/// A desk over a device's two boards. What it is asked to send waits in `sent`.
class FakeDesk final : public BoardDesk {
public:
    FakeDesk(UUIDSource& ids, WallClock& clock) : ids_(ids), clock_(clock) {}

    const Board& board() const override { return shared.shown(); }

    std::expected<UUID, ActFault> act(std::vector<Op> ops) override {
        const auto result = BoardLogic::apply(ops, board(), clock_.now());
        if (!result.rejected.empty()) return std::unexpected(faultOf(result.rejected.front().reason));
        sent.push_back({ids_.next(), std::move(ops)});
        shared.enqueue(sent.back(), clock_.now());
        return sent.back().batchId;
    }

    SharedBoard shared;
    std::vector<PendingBatch> sent;
    std::function<void()> changed = [] {};

private:
    UUIDSource& ids_;
    WallClock& clock_;
};

/// A person at an editor, on time that the test advances.
struct Person {
    explicit Person(PartnerID author, Board board, std::uint64_t firstId = 1000) : ids{firstId} {
        desk.shared = SharedBoard{std::move(board), {}, samples::noon};
        desk.changed = [this] { editor.setLiveItems(desk.board()); };
        editor.setAuthor(author);
        announcer.onNews([this](const AppNews& news) { std::ranges::copy(news.notices, std::back_inserter(notices)); });
        desk.changed();
    }

    /// Ops of the partner come in from the room, which has taken all of one's own before.
    void partner(const Edits::Result& ops) {
        while (!desk.shared.pending().empty()) {
            desk.shared.acked(desk.shared.pending().front().batchId, clock.now());
        }
        desk.shared.applyRemote(ops.value(), clock.now());
        desk.changed();
    }
    /// The room's whole board comes in: it has everything and remembers no tombstone.
    void welcome() {
        Board board = desk.board();
        board.tombstones.clear();
        desk.shared = SharedBoard{std::move(board), {}, clock.now()};
        desk.changed();
    }
    Hand partnerHand() { return {.author = PartnerID::b, .now = clock.now()}; }
    void advance(Seconds span) { sleeper.advance(span); }

    const BoardItem& item(const UUID& id) const {
        const auto* found = desk.board().find(id);
        if (found == nullptr) throw std::runtime_error("not on the board: " + id.lowerString());
        return *found;
    }
    std::string text(const UUID& id) const { return item(id).payload.as<NotePayload>()->pm.plainText(); }
    const std::string& notice() const { return notices.back(); }

    CountingUUIDs ids;
    ManualSleeper sleeper;
    ManualClock clock{sleeper, samples::noon};
    FakeDesk desk{ids, clock};
    Announcer announcer;
    std::vector<std::string> notices;
    EditorModel editor{{desk, ids, clock, sleeper, announcer}};
};

/// One person at an editor, for each test.
class EditorTest : public testing::Test {
protected:
    Person person_{PartnerID::a, deskBoard()};
    EditorModel& editor_ = person_.editor;
    FakeDesk& desk_ = person_.desk;
};

/// What people see of a board.
inline Board look(Board board) {
    for (auto& item : board.items) {
        item.author = PartnerID::a;
        item.updatedAt = samples::noon;
    }
    std::ranges::sort(board.items, {}, &BoardItem::id);
    board.updatedAt = samples::noon;
    board.tombstones.clear();
    return board;
}

} // namespace lumaro
