// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/SyncClient/BoardSession.h"

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Wire.h"
#include "Tests/SyncClient/SyncFixture.h"

namespace lumaro {
namespace {

using samples::numberedId;
using Events = std::vector<std::string>;

class BoardSessionTest : public SyncFixture, public BoardSession::Listener {
protected:
    BoardSession& start(Board lastKnown = {}) {
        session_.emplace(BoardSession::Setup{"http://127.0.0.1:7700", token_, {}, outbox(), std::move(lastKnown), {}},
                         ports(), ids_, *this);
        return *session_;
    }
    BoardSession& online() {
        start().client().connect();
        network_.accept();
        events_.clear();
        return *session_;
    }
    void say(const ServerMessage& message) { network_.say(Wire::encode(message).value()); }
    void relay(BackgroundID paper) { say({ServerMessage::Ops{numberedId(50), PartnerID::a, painted(paper)}}); }
    BackgroundID shown() const { return session_->board().shown().background; }
    BackgroundID confirmed() const { return session_->board().confirmed().background; }

    void received(const ServerMessage& message) override { events_.emplace_back(message.caseName()); }
    void boardChanged(const Board& before, const Board& after) override {
        EXPECT_NE(before, after);
        EXPECT_EQ(after, session_->board().shown());
        events_.push_back("shows " + std::string{nameOf(after.background)});
    }
    void stateChanged(const ConnectionState&) override { events_.emplace_back("state"); }

    Events events_;
    std::optional<BoardSession> session_;
};

TEST_F(BoardSessionTest, R18_WhatWaitsIsOnScreenAfterARestartAndAWelcome) {
    ASSERT_EQ(start().act(painted(BackgroundID::sage))->way, SendOutcome::Way::queued);
    Board room;
    room.background = BackgroundID::oat;
    start(room).client().connect();
    EXPECT_EQ(shown(), BackgroundID::sage);
    network_.accept();
    room.threadTiedAt = samples::noon;
    say({ServerMessage::Welcome{PartnerID::b, room, {.b = true}, SlotNames{"Ada", {}}, {.b = true}}});
    EXPECT_EQ(shown(), BackgroundID::sage);
    EXPECT_EQ(confirmed(), BackgroundID::oat);
    EXPECT_EQ(session_->board().shown().threadTiedAt, samples::noon);
    EXPECT_EQ(session_->online(), (PartnerSet{.b = true}));
    EXPECT_EQ(session_->paired(), (PartnerSet{.b = true}));
    say({ServerMessage::Roster{PartnerSet::both(), {}, PartnerSet::both()}});
    EXPECT_EQ(session_->online(), PartnerSet::both());
    EXPECT_EQ(session_->names().a, "Ada") << "a roster without names changes none";
}

TEST_F(BoardSessionTest, R19_R20_AcksAndRelayedOpsFollowTheRoomsOrder) {
    online();
    const auto own = session_->act(painted(BackgroundID::sage)).value();
    ASSERT_EQ(own.way, SendOutcome::Way::transmitted);
    relay(BackgroundID::sky);
    EXPECT_EQ(shown(), BackgroundID::sage);
    EXPECT_EQ(confirmed(), BackgroundID::sky);
    say({ServerMessage::Ack{own.batches[0]}});
    EXPECT_EQ(confirmed(), BackgroundID::sage);
    relay(BackgroundID::oat);
    say({ServerMessage::Thread{samples::noon}});
    EXPECT_EQ(events_, (Events{"shows sage", "ops", "ack", "shows oat", "ops", "shows oat", "thread"}));
    EXPECT_TRUE(session_->client().outbox().isEmpty());
}

TEST_F(BoardSessionTest, ALargeActGoesInBatchesOfAHundred) {
    online();
    std::vector<Op> ops(2 * BoardSpec::maxOpsPerBatch + 1, painted()[0]);
    ops.back() = painted(BackgroundID::oat)[0];
    const auto act = session_->act(ops).value();
    ASSERT_EQ(act.batches.size(), 3U);
    const auto& pending = session_->client().pending();
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(pending[i].batchId, act.batches[i]);
        EXPECT_EQ(session_->board().pending()[i], (PendingBatch{pending[i].batchId, pending[i].ops}));
    }
    EXPECT_EQ(pending[2].ops, painted(BackgroundID::oat));
    EXPECT_EQ(events_, Events{"shows oat"});
    EXPECT_TRUE(session_->act({})->batches.empty());
}

TEST_F(BoardSessionTest, WhatIsNotStoredIsNotShown) {
    online();
    fault_ = FileFault::noSpace;
    EXPECT_EQ(std::get<FileError>(session_->act(painted()).error()).fault, FileFault::noSpace);
    EXPECT_EQ(session_->board().shown(), Board{});
    EXPECT_TRUE(session_->board().pending().empty() && network_.takeFrames().empty());
    EXPECT_EQ(events_, Events{});
}

} // namespace
} // namespace lumaro
