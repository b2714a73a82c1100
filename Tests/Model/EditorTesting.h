// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Editor/EditorModel.h"
#include "LumaroCore/BoardLogic/SharedBoard.h"
#include "Tests/BoardLogic/SmallBoard.h"
#include "Tests/Fakes/CountingUUIDs.h"
#include "Tests/Fakes/ManualClock.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace lumaro {

/// An editable board over a device's two. What it is asked to send waits in `sent`.
class FakeBoard final : public EditableBoard {
public:
    FakeBoard(UUIDSource& ids, WallClock& clock) : ids_(ids), clock_(clock) {}

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
    explicit Person(PartnerID author, Board begun, std::uint64_t firstId = 1000) : ids{firstId} {
        fake.shared = SharedBoard{std::move(begun), {}, samples::noon};
        fake.changed = [this] { editor.boardChanged(); };
        editor.setAuthor(author);
        announcer.onNews([this](const AppNews& news) { std::ranges::copy(news.notices, std::back_inserter(notices)); });
        fake.changed();
    }

    /// Ops of the partner come in from the room, which has taken all of one's own before.
    void partner(const Edits::Result& ops) {
        while (!fake.shared.pending().empty()) {
            fake.shared.acked(fake.shared.pending().front().batchId, clock.now());
        }
        fake.shared.applyRemote(ops.value(), clock.now());
        fake.changed();
    }
    /// The room's whole board comes in: it has everything and remembers no tombstone.
    void welcome() {
        Board room = fake.board();
        room.tombstones.clear();
        fake.shared = SharedBoard{std::move(room), {}, clock.now()};
        fake.changed();
    }
    Hand partnerHand() { return {.author = PartnerID::b, .now = clock.now()}; }
    void advance(Seconds span) { sleeper.advance(span); }

    const BoardItem& item(const UUID& id) const {
        const auto* found = fake.board().find(id);
        if (found == nullptr) throw std::runtime_error("not on the board: " + id.lowerString());
        return *found;
    }
    std::string text(const UUID& id) const { return item(id).payload.as<NotePayload>()->pm.plainText(); }
    const std::string& notice() const { return notices.back(); }

    CountingUUIDs ids;
    ManualSleeper sleeper;
    ManualClock clock{sleeper, samples::noon};
    FakeBoard fake{ids, clock};
    Announcer announcer;
    std::vector<std::string> notices;
    EditorModel editor{{fake, ids, clock, sleeper, announcer}};
};

/// One person at an editor, for each test.
class EditorTest : public testing::Test {
protected:
    Person person_{PartnerID::a, smallBoard()};
    EditorModel& editor_ = person_.editor;
    ItemInHand& hand_ = editor_.inHand();
    PenInHand& pen_ = editor_.pen();
    FakeBoard& fake_ = person_.fake;
};

/// What people see of a board.
inline Board look(Board board) {
    for (auto& item : board.items) {
        item.setAuthor(PartnerID::a);
        item.updatedAt = samples::noon;
    }
    std::ranges::sort(board.items, {}, &BoardItem::id);
    board.updatedAt = samples::noon;
    board.tombstones.clear();
    return board;
}

} // namespace lumaro
