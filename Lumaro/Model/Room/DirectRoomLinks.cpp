// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Room/DirectRoomLinks.h"

#include <utility>

namespace lumaro {

DirectRoomLink::DirectRoomLink(RoomLinks::Address address, DurableOutbox outbox,
                               SyncClient::Configuration configuration, SyncClient::Ports ports,
                               RoomLink::Listener& listener)
    : listener_(listener), client_(std::move(address.serverURL), std::move(address.token), std::move(address.deviceId),
                                   std::move(outbox), configuration, ports, *this) {
    for (const auto& id : address.heldMedia) client_.holdMedia(id);
    beginning_ = ports.sleeper.wait(Seconds{0}, [this] { begin(); });
}

void DirectRoomLink::begin() {
    std::vector<PendingBatch> waiting;
    for (const auto& batch : client_.pending()) waiting.push_back({batch.batchId, batch.ops});
    listener_.opened(std::move(waiting));
    client_.connect();
}

void DirectRoomLink::send(const UUID& batchId, std::vector<Op> ops) {
    const auto sent = client_.send(std::move(ops), batchId);
    if (!sent) return listener_.notStored(batchId, sent.error());
    listener_.stored(batchId, sent->way, client_.pendingCount());
}

void DirectRoomLink::sendPresence(OwnPresence presence) {
    client_.sendPresence(presence);
}

std::expected<std::unique_ptr<RoomLink>, std::string> DirectRoomLinks::open(Address address,
                                                                            RoomLink::Listener& listener) {
    auto outbox = DurableOutbox::open(ports_.files, ports_.ids, outboxFolder_ + "/" + address.token.coupleId);
    if (!outbox) return std::unexpected("the outbox does not open: " + outbox.error().message);
    return std::make_unique<DirectRoomLink>(std::move(address), std::move(*outbox), configuration_, ports_.client,
                                            listener);
}

} // namespace lumaro
