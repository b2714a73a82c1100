// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Offline/DemoRoom.h"

#include "LumaroCore/BoardLogic/Apply.h"

#include <utility>

namespace lumaro {

class DemoRoom::Link final : public RoomLink {
public:
    explicit Link(DemoRoom& room) : room_(room) {}
    ~Link() override { room_.listener_ = nullptr; }

    void send(const UUID& batchId, std::vector<Op> ops) override {
        room_.demo_.board = BoardLogic::apply(ops, std::move(room_.demo_.board), room_.demo_.board.updatedAt).board;
        room_.waiting_.push_back(batchId);
        const auto way = room_.isOnline_ ? SendOutcome::Way::transmitted : SendOutcome::Way::queued;
        room_.listener_->stored(batchId, way, room_.waiting_.size());
        if (room_.isOnline_) room_.greet();
    }
    void sendPresence(OwnPresence) override {}
    void holdMedia(const UUID&) override {}
    void releaseMedia(const UUID&) override {}
    void retryNow() override {}

private:
    DemoRoom& room_;
};

std::expected<std::unique_ptr<RoomLink>, std::string> DemoRoom::open(Address, RoomLink::Listener& listener) {
    listener_ = &listener;
    later_ = sleeper_.wait(Seconds{0}, [this] {
        listener_->opened({});
        setOnline(isOnline_);
    });
    return std::make_unique<Link>(*this);
}

void DemoRoom::say(ServerMessage::Value message) {
    if (listener_ != nullptr) listener_->received({std::move(message)}, waiting_.size());
}

/// Acknowledges what waits, never from within a call.
void DemoRoom::greet() {
    later_ = sleeper_.wait(Seconds{0.05}, [this] {
        while (!waiting_.empty() && listener_ != nullptr) {
            const auto batch = waiting_.front();
            waiting_.pop_front();
            say(ServerMessage::Ack{batch});
        }
    });
}

void DemoRoom::hang(DemoBoard demo, bool isPartnerHere) {
    demo_ = std::move(demo);
    isPartnerHere_ = isPartnerHere;
    if (isOnline_) setOnline(true);
}

void DemoRoom::setOnline(bool isOnline) {
    isOnline_ = isOnline;
    if (listener_ == nullptr) return;
    if (!isOnline) return listener_->stateChanged({ConnectionState::Waiting{.attempt = 3, .delay = Seconds{8}}});
    listener_->stateChanged({ConnectionState::Connected{}});
    ServerMessage::Welcome welcome;
    welcome.board = demo_.board;
    welcome.roster = {.a = true, .b = isPartnerHere_};
    welcome.paired.b = isPaired_;
    welcome.names = SlotNames{"ana", isPaired_ ? std::optional<std::string>{"bo"} : std::nullopt};
    say(std::move(welcome));
    if (!isPaired_) return greet();
    say(demo_.presence);
    say(demo_.calendar);
    greet();
}

void DemoRoom::setPresence(ServerMessage::Presence presence) {
    demo_.presence = std::move(presence);
    if (isOnline_) say(demo_.presence);
}

void DemoRoom::refuse() {
    say(ServerMessage::Error{{std::string{ServerErrorCode::unauthorized}}, "this token is no longer valid"});
    if (listener_ != nullptr) listener_->stateChanged({ConnectionState::Rejected{}});
}

void DemoRoom::relay(std::vector<Op> ops) {
    demo_.board = BoardLogic::apply(ops, std::move(demo_.board), demo_.board.updatedAt).board;
    say(ServerMessage::Ops{UUID{}, PartnerID::b, std::move(ops)});
}

void DemoRoom::tieThread(Instant at) {
    demo_.board.threadTiedAt = at;
    say(ServerMessage::Thread{at});
}

} // namespace lumaro
