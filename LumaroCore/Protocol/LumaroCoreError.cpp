// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/LumaroCoreError.h"

#include "LumaroCore/Support/Overloaded.h"

namespace lumaro {

std::string LumaroCoreError::errorDescription() const {
    using Text = std::string;
    return std::visit(
        Overloaded{
            [](const InvalidToken& error) { return "Not a Lumaro join token: " + error.text; },
            [](const BadServerResponse& error) { return "The server answered " + std::to_string(error.status) + "."; },
            [](const ScriptFailed& error) { return "Could not read the music player: " + error.detail; },
            [](const NotConnected&) { return Text{"Not connected to the room."}; },
            [](const TransportClosed&) { return Text{"The connection closed."}; },
            [](const Unauthorized&) { return Text{"The room refused this Mac's token; it has been replaced."}; },
            [](const ArtworkUnavailable&) { return Text{"No artwork found for this track."}; }},
        value);
}

} // namespace lumaro
