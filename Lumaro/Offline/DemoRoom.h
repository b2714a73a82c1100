// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Room/RoomLink.h"
#include "Lumaro/Offline/DemoBoard.h"
#include "LumaroCore/Support/Sleeper.h"

#include <deque>
#include <memory>
#include <string_view>

namespace lumaro {

/// A room without a network: it takes every batch, and says what it is told to say.
class DemoRoom final : public RoomLinks {
public:
    /// The sleeper outlives the room.
    explicit DemoRoom(Sleeper& sleeper) : sleeper_(sleeper) {}

    std::expected<std::unique_ptr<RoomLink>, std::string> open(Address address, RoomLink::Listener& listener) override;

    /// The board as the room has it from now on; a device that is connected hears of it.
    void hang(DemoBoard demo, bool isPartnerHere);
    void setPresence(ServerMessage::Presence presence);
    void setOnline(bool isOnline);
    /// Whether anybody else has come onto the board yet.
    void setPaired(bool isPaired) { isPaired_ = isPaired; }
    void refuse();
    /// The partner puts something up.
    void relay(std::vector<Op> ops);
    void tieThread(Instant at);
    const DemoBoard& demo() const { return demo_; }

private:
    class Link;

    void greet();
    void say(ServerMessage::Value message);

    Sleeper& sleeper_;
    DemoBoard demo_;
    bool isPartnerHere_ = true;
    bool isPaired_ = true;
    bool isOnline_ = true;
    RoomLink::Listener* listener_ = nullptr; ///< null while there is no line
    std::deque<UUID> waiting_;               ///< batches that are not acknowledged
    std::unique_ptr<Sleeper::Wait> later_;
};

} // namespace lumaro
