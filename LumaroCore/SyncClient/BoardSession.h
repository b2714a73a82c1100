// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/SharedBoard.h"
#include "LumaroCore/SyncClient/SyncClient.h"

#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {

/// One device on one board, all of it on one thread: the sync client, and the two boards that its messages feed.
/// It is built from the last known board and the outbox, and survives a restart through these two.
class BoardSession final : private SyncClient::Listener {
public:
    /// Hears what the board's people should. Called on the session's thread; it may call the session from within, but
    /// not destroy it.
    class Listener {
    public:
        Listener() = default;
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;
        virtual ~Listener() = default;

        /// A message of the room; the board has taken it in already.
        virtual void received(const ServerMessage& message) = 0;
        /// The shown board looks different. Called before `received` of the message that changed it, or from `act`.
        virtual void boardChanged(const Board& before, const Board& after) = 0;
        virtual void stateChanged(const ConnectionState& state) = 0;
    };

    struct Setup {
        std::string serverURL;
        CoupleToken token;
        std::optional<std::string> deviceId;
        DurableOutbox outbox;
        Board lastKnown; ///< of the room, when this device last heard of it
        SyncClient::Configuration configuration;
    };

    BoardSession(Setup setup, SyncClient::Ports ports, UUIDSource& ids, Listener& listener);

    SyncClient& client() { return client_; }
    const SharedBoard& board() const { return board_; }
    PartnerID slot() const { return client_.token().slot; }
    /// Who is online, and the names, as last heard.
    const PartnerSet& online() const { return online_; }
    const SlotNames& names() const { return names_; }
    const PartnerSet& paired() const { return paired_; }

    struct ActOutcome {
        SendOutcome::Way way = SendOutcome::Way::transmitted; ///< `queued` when any batch is
        std::vector<UUID> batches;                            ///< one for every hundred ops
    };
    /// Stores and shows an act of one's own. After an error nothing of the batch that met it, or of those behind it, is
    /// stored or shown.
    [[nodiscard]] std::expected<ActOutcome, SendError> act(std::vector<Op> ops);

private:
    void received(const ServerMessage& message) override;
    void stateChanged(const ConnectionState& state) override;

    Instant now();
    void meet(PartnerSet online, const std::optional<SlotNames>& names, PartnerSet paired);
    void announce(const Board& before);

    WallClock& clock_;
    UUIDSource& ids_;
    Listener& listener_;
    SharedBoard board_;
    PartnerSet online_;
    PartnerSet paired_ = PartnerSet::both();
    SlotNames names_;
    SyncClient client_;
};

} // namespace lumaro
