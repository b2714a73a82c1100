// SPDX-License-Identifier: Apache-2.0
#include "Fuzz/Fuzz.h"
#include "LumaroCore/Protocol/Messages.h"

#include <variant>

using namespace lumaro;

// Frames as a device gets them from its room, and the room from a device.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = fuzz::textOf(data, size);
    const auto fromRoom = fuzz::roundTrip<ServerMessage>(text);
    const auto fromDevice = fuzz::roundTrip<ClientMessage>(text);
    if (!fromRoom || !fromDevice) return 0;
    // What reads either way has the same ops: a device leaves out only what the room would not take.
    const auto* const relayed = std::get_if<ServerMessage::Ops>(&fromRoom->value);
    const auto* const sent = std::get_if<ClientMessage::Ops>(&fromDevice->value);
    fuzz::require((relayed == nullptr) == (sent == nullptr), "one text has two types");
    fuzz::require(relayed == nullptr || relayed->ops == sent->ops, "a device and a room read different ops");
    // And the same presence: what is of tomorrow is absent to both.
    const auto* const seen = std::get_if<ServerMessage::Presence>(&fromRoom->value);
    const auto* const shown = std::get_if<ClientMessage::Presence>(&fromDevice->value);
    fuzz::require((seen == nullptr) == (shown == nullptr), "one text has two types");
    fuzz::require(seen == nullptr || (seen->nowPlaying == shown->nowPlaying && seen->here == shown->here),
                  "a device and a room read different presences");
    return 0;
}
