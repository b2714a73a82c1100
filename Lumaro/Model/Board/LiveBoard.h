// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Board/BlockBell.h"
#include "Lumaro/Model/Board/BoardNotifications.h"
#include "Lumaro/Model/Board/BoardStore.h"
#include "Lumaro/Model/Board/EditableBoard.h"
#include "Lumaro/Model/Board/ExpiryWatch.h"
#include "Lumaro/Model/Board/FallingItems.h"
#include "Lumaro/Model/Media/MediaCache.h"
#include "Lumaro/Model/News/Announcer.h"
#include "Lumaro/Model/Room/Connection.h"
#include "LumaroCore/BoardLogic/SharedBoard.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Services/NotificationCenter.h"
#include "LumaroCore/Services/SoundPlayer.h"
#include "LumaroCore/Services/UserDefaults.h"
#include "LumaroCore/Support/UUIDSource.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace lumaro {

/// What is shown of the board.
struct BoardState {
    /// As this device shows it, with those items that are falling.
    Board board;
    std::set<UUID> arriving;
    std::set<UUID> falling;
    /// Batches of acts that are shown but not on disk yet.
    std::set<UUID> unstoredBatches;
    /// The latest acts that could not be stored, oldest first; older ones are forgotten.
    static constexpr std::size_t maxFailedBatches = 64;
    std::deque<UUID> failedBatches;
    std::optional<Instant> lastBlockRang;
};

/// The board of this device: the room's with one's own acts over it, what it looks like while things come and go, its
/// snapshot on disk, and what happens to it as time passes.
class LiveBoard final : public EditableBoard {
public:
    /// All outlive the board.
    struct Ports {
        Sleeper& sleeper;
        WallClock& clock;
        Log& log;
        UUIDSource& ids;
        FileSystem& files;
        BackgroundRunner& background;
        UserDefaults& defaults;
        NotificationCenter& notifications;
        SoundPlayer& sounds;
    };
    struct Neighbours {
        Connection& connection;
        const MediaCache& media;
        Announcer& announcer;
        /// The board changed, and not by an act of the editor, which sees its own.
        std::function<void()> changedByOthers;
        /// What the person wants of an item that they were notified of.
        std::function<void(const NewsAnswer&)> answered;
        const std::string& partnerName;
    };

    /// `folder` is that of the snapshots. Hangs up what greets people who are on no board.
    LiveBoard(std::string folder, Ports ports, BoardState& state, Neighbours neighbours);
    LiveBoard(const LiveBoard&) = delete;
    LiveBoard& operator=(const LiveBoard&) = delete;
    ~LiveBoard() override = default;

    /// The room's board as this device has heard of it, and what waits over it.
    const SharedBoard& shared() const { return shared_; }
    const Board& board() const override { return shared_.shown(); }

    /// This device is on the couple's board: what it looked like last is shown until the room speaks.
    void adopt(const CoupleToken& token);
    /// It is on no board.
    void forget();

    std::expected<UUID, ActFault> act(std::vector<Op> ops) override;
    void stored(const UUID& batchId);
    void withdraw(const UUID& batchId);

    /// The line is there, and these waited from before.
    void opened(std::vector<PendingBatch> waiting);
    void take(const ServerMessage::Welcome& welcome);
    void take(const ServerMessage::Ops& relayed);
    void take(const ServerMessage::Ack& ack);
    void take(const ServerMessage::Thread& thread);

    /// The picture will never be in the room: what shows it comes down.
    void takeDownPicture(const UUID& mediaId);
    /// The computer slept, or the clock was set.
    void lookAtClock();
    /// The person looks at the board, or no longer.
    void setLooking(bool isLooking) { told_.setLooking(isLooking); }
    /// Writes what is not on disk yet.
    void flush() { store_.flush(); }

private:
    Instant now() const;
    void changed(const Board& before);
    void changedByOthers(const Board& before);
    void show();
    void letFall(const Board& before);
    void welcomeItems(const Board& before);
    void takeExpiredDown();
    void ring(Instant end);

    Ports ports_;
    BoardState& state_;
    Neighbours neighbours_;
    std::optional<CoupleToken> token_;
    SharedBoard shared_;
    bool isStarter_ = true; ///< what is shown is no couple's board
    BoardStore store_;
    FallingItems falling_;
    ExpiryWatch expiry_;
    BlockBell bell_;
    BoardNotifications told_;
    std::unique_ptr<Sleeper::Wait> arrivalClearTask_;
};

} // namespace lumaro
