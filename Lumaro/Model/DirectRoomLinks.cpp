// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/DirectRoomLinks.h"

#include <utility>

namespace lumaro {
namespace {

class DirectRoomLink final : public RoomLink, private SyncClient::Listener {
public:
    DirectRoomLink(RoomLinks::Address address, DurableOutbox outbox, SyncClient::Configuration configuration,
                   SyncClient::Ports ports, RoomLink::Listener& listener)
        : listener_(listener), sleeper_(ports.sleeper),
          client_(std::move(address.serverURL), std::move(address.token), std::move(address.deviceId),
                  std::move(outbox), configuration, ports, *this) {
        for (const auto& id : address.heldMedia) client_.holdMedia(id);
        // Later: whoever opens it has it in hand by then.
        beginning_ = sleeper_.wait(Seconds{0}, [this] { begin(); });
    }

    void send(const UUID& batchId, std::vector<Op> ops) override {
        const auto sent = client_.send(std::move(ops), batchId);
        if (!sent) return listener_.notStored(batchId, sent.error());
        listener_.stored(batchId, sent->way, client_.pendingCount());
    }
    void sendPresence(OwnPresence presence) override {
        client_.sendPresence(std::move(presence.nowPlaying), std::move(presence.here), presence.activity);
    }
    void holdMedia(const UUID& id) override { client_.holdMedia(id); }
    void releaseMedia(const UUID& id) override { client_.releaseMedia(id); }
    void retryNow() override { client_.retryNow(); }

private:
    void begin() {
        std::vector<PendingBatch> waiting;
        for (const auto& batch : client_.pending()) waiting.push_back({batch.batchId, batch.ops});
        listener_.opened(std::move(waiting));
        client_.connect();
    }

    void received(const ServerMessage& message) override { listener_.received(message, client_.pendingCount()); }
    void stateChanged(const ConnectionState& state) override { listener_.stateChanged(state); }

    RoomLink::Listener& listener_;
    Sleeper& sleeper_;
    SyncClient client_;
    std::unique_ptr<Sleeper::Wait> beginning_;
};

} // namespace

std::expected<std::unique_ptr<RoomLink>, std::string> DirectRoomLinks::open(Address address,
                                                                            RoomLink::Listener& listener) {
    auto outbox = DurableOutbox::open(ports_.files, ports_.ids, outboxFolder_ + "/" + address.token.coupleId);
    if (!outbox) return std::unexpected("the outbox does not open: " + outbox.error().message);
    return std::make_unique<DirectRoomLink>(std::move(address), std::move(*outbox), configuration_, ports_.client,
                                            listener);
}

} // namespace lumaro
